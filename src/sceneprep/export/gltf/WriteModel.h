#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/PartCounter.h>
#include <sceneprep/model/Textures.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep::Gltf
{

/// Writes a scene as glTF 2.0: one binary file, or a text file and beside it the binary buffer and the pictures that
/// lay in the input.
/// @return what the format cannot hold or had to be mended, one line each.
/// @throws ToolError when a file cannot be written.
std::vector<std::string> WriteModel(Importing::SceneContainer& scene, const Textures& textures,
                                    const std::filesystem::path& file, bool isBinary,
                                    const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep::Gltf
