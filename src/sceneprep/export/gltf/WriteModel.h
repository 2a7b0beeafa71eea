#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/export/gltf/WriteOptions.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/Notes.h>

#include <filesystem>

namespace Sceneprep::Gltf
{

/// Writes a model as glTF 2.0: one .glb file, or a .gltf file and next to it the binary buffer and images.
/// @param options  isBinary and stem follow from the file
/// @return what the format cannot hold or had to be mended.
/// @throws ToolError when a file cannot be written.
Notes WriteModel(const Model& model, const std::filesystem::path& file, WriteOptions options,
                 const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep::Gltf
