#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep::Batch
{

/// A model file and the name of its output.
struct ModelFile
{
    std::filesystem::path input;   ///< relative to the folder that was searched
    std::filesystem::path output;  ///< relative to the folder of the outputs

    friend bool operator==(const ModelFile&, const ModelFile&) = default;
};

/// Finds the model files below a folder, sorted by name, without following links to folders.
/// @param skipped     a folder that is not searched: that of the outputs may be inside
/// @param extensions  of model files, in lower case, without the dot
/// @throws ToolError if the folder cannot be searched.
std::vector<std::filesystem::path> FindModels(const std::filesystem::path& folder, const std::filesystem::path& skipped,
                                              const std::vector<std::string>& extensions);

/// Names the outputs: "sub/a.obj" becomes "sub/a.glb". Models that would have the same output, as a.obj and a.fbx, get
/// names with their own extension: a.obj.glb and a.fbx.glb. Upper and lower case count as equal.
std::vector<ModelFile> NameOutputs(const std::vector<std::filesystem::path>& inputs, const std::string& format);

}  // namespace Sceneprep::Batch
