#pragma once

#include <assimp/mesh.h>
#include <importing/geometry/Geometry.h>

#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Converts a mesh for Assimp: positions, normals unless all are (0, 0, 0), every UV set, triangles. Takes linear time.
/// @throws std::out_of_range if an index of a triangle is not valid.
std::unique_ptr<aiMesh> ConvertMesh(Importing::Geometry& geometry);

/// Adds a bone for each joint, with its weights and bind pose.
/// @param bones  [joints] the names of the bones' nodes
void AddBones(Importing::Geometry& geometry, const std::vector<std::string>& bones, aiMesh& mesh);

/// Returns whether at least one vertex is a corner of more than one triangle.
bool SharesVertices(const aiMesh& mesh);

/// Bakes a matrix into a mesh: normals are multiplied by the inverse transpose and normalised. The winding is flipped
/// if the matrix mirrors, so that front faces stay front faces.
void BakeMatrix(const D3DXMATRIX& matrix, aiMesh& mesh);

}  // namespace Sceneprep
