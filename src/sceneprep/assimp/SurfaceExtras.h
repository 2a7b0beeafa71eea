#pragma once

#include <assimp/scene.h>
#include <importing/records/Surface.h>

namespace Sceneprep
{

/// Collision offset and name of a surface are stored as extras of the node that references the surface, in formats that
/// have extras. The offset, a number, is stored if it is not 0, the name if it differs from the mesh's name.
inline constexpr const char* kCollisionOffsetExtra = "collisionOffset";
inline constexpr const char* kSurfaceNameExtra = "surfaceName";

/// Sets the surface's collision offset and name from the node's extras. Extras that are missing or of another type are
/// ignored.
void ApplyExtras(const aiNode& node, Importing::Surface& surface);

}  // namespace Sceneprep
