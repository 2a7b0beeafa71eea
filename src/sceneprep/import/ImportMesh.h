#pragma once

#include <assimp/mesh.h>
#include <importing/geometry/Geometry.h>
#include <pipeline/scene/SceneSupplement.h>

#include <cstddef>

namespace Sceneprep
{

/// Counts of dropped content.
struct ImportedMesh
{
    Pipeline::VertexLayout layout;
    std::size_t droppedWeights = 0;  ///< not finite, or of a missing vertex
};

/// Fills an empty geometry with a mesh of a file: name, positions, normals if the mesh has them, texture coordinates,
/// colours in the sets after them, weights, and faces. A mesh with triangles keeps only these; a mesh without keeps its
/// lines or, without lines, its points. The poly size is that of the kept faces.
ImportedMesh ImportMesh(const aiMesh& mesh, Importing::Geometry& geometry);

}  // namespace Sceneprep
