#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/import/gltf/ReadGltf.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>
#include <variant>

namespace Sceneprep
{

/// A model file that has been read but not converted yet: glTF 2.0, or a format that Assimp reads.
using OpenedModel = std::variant<GltfFile, ModelSource>;

/// Reads a model file.
/// @throws ToolError if the file does not exist, has an unsupported format, or cannot be read.
OpenedModel OpenModel(const std::filesystem::path& file, Progress& progress);

/// Converts a file into a model with an empty scene, as ReadGltf() or ImportModel() does.
/// @param options  apply to glTF 2.0
/// @throws ToolError if the file is not valid.
void ConvertModel(OpenedModel opened, Model& model, const GltfReadOptions& options = {},
                  const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep
