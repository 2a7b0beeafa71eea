#pragma once

#include <assimp/scene.h>
#include <importing/records/Surface.h>

namespace Sceneprep
{

/// What a surface carries beyond mesh and material travels as a node's extras, in formats that have such:
/// "collisionOffset", a number, where it is not 0; "surfaceName", where it is not the mesh's name already.

/// Gives the file's node, which shows this one surface, the surface's extras.
void SetExtras(Importing::Surface& surface, const aiMesh& mesh, aiNode& node);

/// Takes the surface's values from the node's extras; what is not there, or is no such value, stays.
void ApplyExtras(const aiNode& node, Importing::Surface& surface);

}  // namespace Sceneprep
