#pragma once

#include <assimp/scene.h>

namespace Sceneprep
{

/// Returns whether Assimp read the scene from glTF 2.0. Assimp changes some glTF values, which the importers restore:
/// texture transforms, position and field of view of cameras, references to textures.
bool IsFromGltf(const aiScene& source);

}  // namespace Sceneprep
