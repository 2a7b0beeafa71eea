#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>
#include <sceneprep/import/gltf/Primitives.h>

#include <cstddef>
#include <vector>

namespace Sceneprep::GltfImport
{

/// Counts of values of vertices that cannot be kept.
struct VertexLosses
{
    std::size_t weights = 0;   ///< NaN or infinite
    std::size_t integers = 0;  ///< attributes with integers that a float cannot represent
};

/// Fills the vertices of geometries.
///
/// Texture coordinates have v upwards: v = 1 - v of the file. Attributes that vertices of the container do not have are
/// stored unchanged in further texture coordinate sets: colours with four components, tangents, and custom attributes.
/// A mesh without normals has normals (0, 0, 0).
class GeometryFiller
{
public:
    /// Fills the vertices of one geometry.
    /// @param jointCount  number of joints of the skin; 0 for a mesh without a skin, whose vertices get no weights
    /// @return the content of the texture coordinate sets
    /// @throws FormatError if a weight other than 0 belongs to a joint that the skin does not have.
    Pipeline::VertexLayout Fill(const Primitive& primitive, std::size_t jointCount, Importing::Geometry& geometry);

    const VertexLosses& Losses() const { return losses_; }

private:
    void FillPositions(const Primitive& primitive, Importing::Geometry& geometry);
    void FillNormals(const Primitive& primitive, Importing::Geometry& geometry);
    void FillTexCoords(const Primitive& primitive, std::size_t sets, Importing::Geometry& geometry);
    void FillAttribute(const Attribute& attribute, int firstSet, Importing::Geometry& geometry);
    void FillWeights(const Primitive& primitive, std::size_t jointCount, Importing::Geometry& geometry);
    void CheckPrecision(const Elements& elements);

    /// Converts into a buffer that is reused.
    const float* Floats(const Elements& elements);

    std::vector<float> floats_;
    VertexLosses losses_;
};

}  // namespace Sceneprep::GltfImport
