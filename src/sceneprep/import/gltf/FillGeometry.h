#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>
#include <sceneprep/import/gltf/Primitives.h>

#include <cstddef>
#include <vector>

namespace Sceneprep::GltfImport
{

/// What could not be kept of vertices.
struct VertexLosses
{
    std::size_t weights = 0;   ///< that are NaN or infinite
    std::size_t integers = 0;  ///< attributes with whole numbers that floats do not hold
};

/// Fills the vertices of geometries.
///
/// Texture coordinates have v upwards: v = 1 - v of the file. Attributes without a place of their own are stored in
/// further texture coordinate sets as they are: colours with four components, tangents, and attributes with names that
/// the format does not know. A mesh without normals has normals (0, 0, 0).
class GeometryFiller
{
public:
    /// @param jointCount  number of joints of the skin; 0 where no skin moves the mesh: then vertices get no weights
    /// @return what the texture coordinate sets hold.
    /// @throws FormatError when a weight other than 0 belongs to a joint that the skin does not have.
    Pipeline::VertexLayout Fill(const Primitive& primitive, std::size_t jointCount, Importing::Geometry& geometry);

    const VertexLosses& Losses() const { return losses_; }

private:
    void FillPositions(const Primitive& primitive, Importing::Geometry& geometry);
    void FillNormals(const Primitive& primitive, Importing::Geometry& geometry);
    void FillTexCoords(const Primitive& primitive, std::size_t sets, Importing::Geometry& geometry);
    void FillAttribute(const Attribute& attribute, int firstSet, Importing::Geometry& geometry);
    void FillWeights(const Primitive& primitive, std::size_t jointCount, Importing::Geometry& geometry);
    void CheckPrecision(const Elements& elements);

    /// Converts into a buffer that is used again and again.
    const float* Floats(const Elements& elements);

    std::vector<float> floats_;
    VertexLosses losses_;
};

}  // namespace Sceneprep::GltfImport
