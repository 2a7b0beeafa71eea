#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/steps/StepSequence.h>
#include <sceneprep/model/Textures.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Model files as one scene.
struct LoadedInputs
{
    std::unique_ptr<Importing::SceneContainer> scene;  ///< null when all inputs were left out
    Textures textures;
    std::vector<Pipeline::StepResult> steps;
    std::vector<std::string> notes;              ///< what was left out of the models
    std::vector<std::filesystem::path> inputs;   ///< that were read
    std::vector<std::filesystem::path> leftOut;  ///< that could not be read
    std::vector<std::string> problems;           ///< why, one line each
};

/// Reads the inputs in order and appends all others to the first. With keepGoing an input that cannot be read,
/// whatever the reason, is left out; also when none remains.
/// @throws ToolError without keepGoing when an input cannot be read.
LoadedInputs LoadInputs(const std::vector<std::filesystem::path>& inputs, bool keepGoing, const PluginLibrary& plugin,
                        Progress& progress);

}  // namespace Sceneprep
