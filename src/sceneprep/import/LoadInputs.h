#pragma once

#include <pipeline/steps/RunStep.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/WorkState.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// An input that could not be read.
struct SkippedInput
{
    std::filesystem::path file;
    std::string problem;  ///< one line
};

/// The inputs as one model.
struct Inputs
{
    Model model;  ///< empty if no input could be read
    std::vector<Pipeline::StepResult> steps = {};
    std::vector<std::filesystem::path> read = {};
    std::vector<std::filesystem::path> files = {};  ///< those read and the files that they refer to, each once
    std::vector<SkippedInput> skipped = {};
};

struct LoadOptions
{
    bool keepGoing = false;                 ///< skip inputs that cannot be read for any reason, even if none remains
    std::optional<std::string> scene = {};  ///< name or index of the scene to read from glTF files
};

/// Reads the inputs in order and appends all others to the first.
/// @throws ToolError without keepGoing, if an input cannot be read.
Inputs LoadInputs(const std::vector<std::filesystem::path>& files, const LoadOptions& options,
                  const PluginLibrary& plugin, Progress& progress, WorkState& state);

}  // namespace Sceneprep
