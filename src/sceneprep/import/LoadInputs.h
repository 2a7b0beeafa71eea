#pragma once

#include <pipeline/steps/RunStep.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/WorkState.h>

#include <filesystem>
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
    std::vector<Pipeline::StepResult> steps;
    std::vector<std::filesystem::path> read;
    std::vector<SkippedInput> skipped;
};

/// Reads the inputs in order and appends all others to the first. With keepGoing, inputs that cannot be read for any
/// reason are skipped, even if none remains.
/// @throws ToolError without keepGoing, if an input cannot be read.
Inputs LoadInputs(const std::vector<std::filesystem::path>& files, bool keepGoing, const PluginLibrary& plugin,
                  Progress& progress, WorkState& state);

}  // namespace Sceneprep
