#include <sceneprep/import/LoadInputs.h>

#include <pipeline/steps/DropUnreachableNodes.h>
#include <sceneprep/import/AppendModel.h>
#include <sceneprep/import/ImportModel.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/FreedMemory.h>
#include <sceneprep/run/WorkState.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <optional>
#include <utility>

namespace Sceneprep
{

using Pipeline::DropUnreachableNodes;
using Pipeline::RunStep;
using Pipeline::StepResult;

namespace
{

namespace fs = std::filesystem;

/// One model file that is not yet part of the whole.
struct Input
{
    Model model;
    std::vector<StepResult> steps;
};

Input Read(const fs::path& file, const PluginLibrary& plugin, Progress& progress)
{
    WorkState::Enter(WorkState::Phase::Reading, file);
    Input input;
    input.model.scene = plugin.CreateScene();
    std::optional<ModelSource> source;
    input.steps.push_back(
        RunStep("Read " + file.filename().string(), progress, [&] { source.emplace(file, progress); }));
    input.steps.push_back(RunStep("Import " + file.filename().string(), progress, [&] {
        ImportModel(std::move(*source), input.model, [&](double part) { progress.Update(part); });
        source.reset();
        ReturnFreedMemory();
    }));
    return input;
}

/// Reads a file and catches every error.
/// @return none if the file cannot be read; `problem` is the reason then.
std::optional<Input> TryToRead(const fs::path& file, const PluginLibrary& plugin, Progress& progress,
                               std::string& problem)
{
    try
    {
        return Read(file, plugin, progress);
    }
    catch (const ToolError& error)
    {
        problem = error.what();
    }
    catch (const std::bad_alloc&)
    {
        problem = WorkState::DescribeShortage();
    }
    catch (const std::exception& error)
    {
        problem = WorkState::DescribeFailure(error);
    }
    return std::nullopt;
}

/// Makes an input the model, or appends it to the model.
void Add(const fs::path& file, Input input, Progress& progress, Inputs& inputs)
{
    WorkState::Enter(WorkState::Phase::Preparing, file);
    std::move(input.steps.begin(), input.steps.end(), std::back_inserter(inputs.steps));
    if (inputs.read.empty())
        inputs.model = std::move(input.model);
    else
        inputs.steps.push_back(RunStep("Append " + file.filename().string(), progress,
                                       [&] { AppendModel(inputs.model, std::move(input.model)); }));
    inputs.read.push_back(file);
}

}  // namespace

Inputs LoadInputs(const std::vector<fs::path>& files, bool keepGoing, const PluginLibrary& plugin, Progress& progress)
{
    Inputs inputs;
    for (const fs::path& file : files)
    {
        std::string problem;
        std::optional<Input> input =
            keepGoing ? TryToRead(file, plugin, progress, problem) : Read(file, plugin, progress);
        // An error from here on ends the work, since it leaves half a model.
        if (input)
            Add(file, std::move(*input), progress, inputs);
        else
            inputs.skipped.push_back({file, problem});
    }
    if (inputs.read.size() > 1)
        DropUnreachableNodes({*inputs.model.scene, inputs.model.supplement});  // each AppendSC() leaves a spare node
    return inputs;
}

}  // namespace Sceneprep
