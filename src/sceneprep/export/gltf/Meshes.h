#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/export/gltf/Buffers.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace Sceneprep::Gltf
{

/// What had to be mended, because the format allows no such values.
struct MendedValues
{
    std::size_t triangles = 0;  ///< left out: corners at infinity or nowhere
    std::size_t normals = 0;    ///< without length or direction: a face's normal stands in
    std::size_t texCoords = 0;  ///< not finite: (0, 0) stands in
    std::size_t skins = 0;      ///< left out: weights that name no joint
    std::size_t weights = 0;    ///< vertices whose weights did not add up to 1
};

/// A mesh as it lies in the file: accessors by the format's names of vertex attributes, and that of the indices.
struct MeshArrays
{
    std::map<std::string, int> attributes;
    int indices = -1;
    bool isSkinned = false;

    std::size_t CountTexCoords() const;
};

/// Writes the arrays of geometries, each once, however many surfaces show it.
class MeshWriter
{
public:
    MeshWriter(Importing::SceneContainer& scene, Buffers& buffers, tinygltf::Model& model);

    /// @return the arrays of a geometry; null when it has no triangle to show.
    /// @throws std::out_of_range when there is no such geometry, or an index leads to no vertex.
    const MeshArrays* Find(int geometry);

    const MendedValues& Mended() const { return mended_; }

private:
    std::optional<MeshArrays> Write(Importing::Geometry& geometry);
    void WritePositions(Importing::Geometry& geometry, const std::vector<std::uint32_t>& triangles, MeshArrays& arrays);
    void WriteNormals(Importing::Geometry& geometry, const std::vector<std::uint32_t>& triangles, MeshArrays& arrays);
    void WriteTexCoords(Importing::Geometry& geometry, MeshArrays& arrays);
    void WriteWeights(Importing::Geometry& geometry, MeshArrays& arrays);
    void WriteIndices(const std::vector<std::uint32_t>& triangles, std::size_t vertexCount, MeshArrays& arrays);
    std::vector<std::uint32_t> UsableTriangles(Importing::Geometry& geometry);

    Importing::SceneContainer& scene_;
    Buffers& buffers_;
    tinygltf::Model& model_;
    std::map<int, std::optional<MeshArrays>> written_;
    MendedValues mended_;
};

}  // namespace Sceneprep::Gltf
