#pragma once

#include <assimp/scene.h>
#include <importing/records/Surface.h>

namespace Sceneprep
{

/// What a surface carries beyond mesh and material travels as extras of the node that shows it, in formats that have
/// such: the offset, a number, where it is not 0; the name where it is not the mesh's name already.
inline constexpr const char* kCollisionOffsetExtra = "collisionOffset";
inline constexpr const char* kSurfaceNameExtra = "surfaceName";

/// Takes the surface's values from the node's extras; what is not there, or is no such value, stays.
void ApplyExtras(const aiNode& node, Importing::Surface& surface);

}  // namespace Sceneprep
