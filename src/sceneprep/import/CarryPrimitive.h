#pragma once

#include <assimp/scene.h>
#include <sceneprep/model/Carried.h>

#include <vector>

namespace Sceneprep
{

/// Returns whether the mesh must be written unchanged, because steps work on triangles only: it has morph targets,
/// points or lines.
bool IsCarriedWhole(const aiMesh& mesh);

/// Returns the primitive that is written for such a mesh: positions, normals, texture coordinates, colours, its
/// triangles, lines or points, and for each morph target the differences of positions and normals.
///
/// Targets with another number of vertices are skipped.
/// @param object  gets the default weights and the names of the targets, as members of a glTF mesh
CarriedPrimitive CarryPrimitive(const aiMesh& mesh, Json& object);

/// Returns an accessor of floats.
/// @param width  how many of the values make up an element of the type
CarriedAccessor FloatAccessor(const std::vector<float>& values, std::size_t width, const char* type);

}  // namespace Sceneprep
