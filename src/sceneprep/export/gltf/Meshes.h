#pragma once

#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>
#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/export/gltf/MeshArrays.h>
#include <sceneprep/model/Model.h>

#include <cstddef>
#include <map>
#include <optional>

namespace Sceneprep::Gltf
{

/// Writes the arrays of geometries, each once, however many surfaces show it.
///
/// A mesh whose normals are all (0, 0, 0) is written without normals. Pinned meshes that carry a primitive
/// of the input are written as they came.
class MeshWriter
{
public:
    /// The model has to outlive the writer.
    MeshWriter(const Model& model, Buffers& buffers, Document& document);

    /// @return the arrays of a geometry; null when it has nothing to show.
    /// @throws std::out_of_range when there is no such geometry, or an index of it is out of range.
    const MeshArrays* Find(int geometry);

    const MendedValues& Mended() const { return mended_; }

private:
    std::optional<MeshArrays> Write(int geometry);
    std::optional<MeshArrays> WriteTriangles(Importing::Geometry& geometry, const Pipeline::VertexLayout& layout);
    std::vector<std::uint32_t> UsableTriangles(Importing::Geometry& geometry);
    void WritePositions(Importing::Geometry& geometry, const std::vector<std::uint32_t>& triangles, MeshArrays& arrays);
    void WriteNormals(Importing::Geometry& geometry, const std::vector<std::uint32_t>& triangles, MeshArrays& arrays);
    void WriteWeights(Importing::Geometry& geometry, MeshArrays& arrays);
    void WriteIndices(const std::vector<std::uint32_t>& triangles, std::size_t vertexCount, MeshArrays& arrays);

    const Model& model_;
    Buffers& buffers_;
    Document& document_;
    std::map<int, std::optional<MeshArrays>> written_;
    MendedValues mended_;
};

}  // namespace Sceneprep::Gltf
