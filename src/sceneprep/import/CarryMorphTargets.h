#pragma once

#include <assimp/scene.h>
#include <sceneprep/model/Carried.h>

namespace Sceneprep
{

/// Makes the primitive that is written for a mesh with morph targets: positions, normals, texture coordinates, colours
/// and triangles of the mesh, and for each target the differences of positions and normals.
///
/// Targets of another number of vertices than the mesh are skipped.
/// @param object  gets the default weights and the names of the targets, as members of a glTF mesh
CarriedPrimitive CarryMorphTargets(const aiMesh& mesh, Json& object);

/// Returns whether the mesh has a target that CarryMorphTargets() keeps.
bool HasMorphTargets(const aiMesh& mesh);

/// Returns an accessor of floats.
/// @param width  how many of the values make up an element of the type
CarriedAccessor FloatAccessor(const std::vector<float>& values, std::size_t width, const char* type);

}  // namespace Sceneprep
