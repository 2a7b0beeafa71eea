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
    std::size_t droppedWeights = 0;  ///< that are not finite, or that refer to no vertex
};

/// Fills an empty geometry with a mesh of a file: name, positions, normals where the mesh has them, texture
/// coordinates, colours in the sets after them, weights, and the faces. A mesh with triangles keeps these alone; one
/// without keeps its lines, or else its points, and the geometry has their poly size.
ImportedMesh ImportMesh(const aiMesh& mesh, Importing::Geometry& geometry);

}  // namespace Sceneprep
