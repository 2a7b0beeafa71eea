#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>

#include <array>
#include <optional>
#include <vector>

namespace Pipeline
{

/// What baking a matrix into a mesh does to directions.
///
/// The container multiplies normals by the matrix with normalised rows, which is wrong where the matrix scales axes
/// differently or shears. The right matrix is the inverse transpose. The container does not know of tangents at all.
class AttributeBaking
{
public:
    explicit AttributeBaking(const D3DXMATRIX& matrix);

    /// Returns whether the container bakes normals wrongly, and the right matrix exists.
    bool CorrectsNormals() const { return correction_.has_value(); }

    /// Returns the normal that is right after baking, as long as it was before.
    D3DXVECTOR3 Bake(const D3DXVECTOR3& normal) const;

    /// Changes the normals of a mesh so that they are right after the container has baked the matrix. Does nothing
    /// where the container does it right, so no bit changes.
    void PrepareNormals(Importing::Geometry& geometry) const;

    /// Bakes the matrix into the tangents of a mesh: the direction is multiplied by the matrix, the sign changes where
    /// the matrix mirrors.
    void BakeTangents(Importing::Geometry& geometry, const VertexLayout& layout) const;

private:
    using Matrix3 = std::array<std::array<double, 3>, 3>;
    struct Correction
    {
        Matrix3 inverseTranspose;
        Matrix3 undo;  ///< of what the container multiplies normals by
    };

    Matrix3 matrix_;
    bool isMirroring_;
    std::optional<Correction> correction_;
};

}  // namespace Pipeline
