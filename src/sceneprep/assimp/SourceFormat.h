#pragma once

#include <assimp/scene.h>

namespace Sceneprep
{

/// @return whether the model library read the scene from glTF 2.0. What it hands on differently there can be undone:
///         texture transforms, the place and the field of view of cameras, references to textures.
bool IsFromGltf(const aiScene& source);

}  // namespace Sceneprep
