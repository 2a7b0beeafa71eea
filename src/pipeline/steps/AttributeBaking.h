#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>

#include <array>
#include <optional>
#include <vector>

namespace Pipeline
{

/// Bakes a matrix into the normals and tangents of a mesh.
///
/// The container multiplies normals by the matrix with normalised rows, which is wrong for non-uniform scale and shear;
/// the right matrix is the inverse transpose. The container does not bake tangents at all.
class AttributeBaking
{
public:
    explicit AttributeBaking(const D3DXMATRIX& matrix);

    /// Returns whether the container bakes normals wrongly, and the right matrix exists.
    bool CorrectsNormals() const { return correction_.has_value(); }

    /// Returns the correctly baked normal, with the length of the given one.
    D3DXVECTOR3 Bake(const D3DXVECTOR3& normal) const;

    /// Changes the normals of a mesh so that they are right after the container has baked the matrix. Changes no bit
    /// if the container bakes them correctly.
    void PrepareNormals(Importing::Geometry& geometry) const;

    /// Bakes the matrix into the tangents of a mesh: multiplies the direction by the matrix, and negates the sign if
    /// the matrix mirrors.
    void BakeTangents(Importing::Geometry& geometry, const VertexLayout& layout) const;

private:
    using Matrix3 = std::array<std::array<double, 3>, 3>;
    struct Correction
    {
        Matrix3 inverseTranspose;
        Matrix3 undo;  ///< inverse of the matrix that the container multiplies normals by
    };

    Matrix3 matrix_;
    bool isMirroring_;
    std::optional<Correction> correction_;
};

}  // namespace Pipeline
