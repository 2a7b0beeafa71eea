#pragma once

#include <assimp/scene.h>

#include <filesystem>

namespace Sceneprep
{

/// Writes the flat metadata of a scene's nodes into a glTF file as the nodes' extras, which the model library's
/// exporter leaves out.
/// @param file  the .gltf or .glb file that was written from the scene
/// @throws ToolError when the file is not what the scene leads to expect.
void AddExtras(const aiScene& scene, const std::filesystem::path& file);

}  // namespace Sceneprep
