#pragma once

#include <assimp/mesh.h>
#include <importing/geometry/Geometry.h>

#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Makes a mesh for a file: positions, normals unless all are (0, 0, 0), every UV set, triangles.
/// @throws std::out_of_range when an index leads to no vertex.
std::unique_ptr<aiMesh> ConvertMesh(Importing::Geometry& geometry);

/// Ties a mesh to bones, one for each joint.
/// @param bones  [joints] the names of the nodes that they are
void AddBones(Importing::Geometry& geometry, const std::vector<std::string>& bones, aiMesh& mesh);

/// @return whether some vertex is a corner of more than one triangle.
bool SharesVertices(const aiMesh& mesh);

/// Carries a mesh by a matrix: normals by the inverse transpose, to unit length; the winding is turned where the matrix
/// mirrors, so that faces look the same way as before.
void BakeMatrix(const D3DXMATRIX& matrix, aiMesh& mesh);

}  // namespace Sceneprep
