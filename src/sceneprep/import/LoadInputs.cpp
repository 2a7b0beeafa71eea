#include <sceneprep/import/LoadInputs.h>

#include <pipeline/steps/DropUnreachableNodes.h>
#include <sceneprep/import/AppendModel.h>
#include <sceneprep/import/InputFiles.h>
#include <sceneprep/import/OpenModel.h>
#include <sceneprep/run/FreedMemory.h>
#include <sceneprep/run/NameShortage.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
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
    std::vector<fs::path> files;
};

Input Read(const fs::path& file, const LoadOptions& options, const PluginLibrary& plugin, Progress& progress,
           WorkState& state)
{
    state.Enter(WorkState::Phase::Reading, file);
    Input input;
    input.model.scene = NameShortage(state, [&] { return plugin.CreateScene(); });
    std::optional<OpenedModel> opened;
    input.steps.push_back(RunStep("Read " + file.filename().string(), progress,
                                  [&] { opened = NameShortage(state, [&] { return OpenModel(file, progress); }); }));
    input.files = FilesOf(*opened);
    input.steps.push_back(RunStep("Import " + file.filename().string(), progress, [&] {
        ConvertModel(std::move(*opened), input.model, {.scene = options.scene},
                     [&](double part) { progress.Update(part); });
        opened.reset();
        ReturnFreedMemory();
    }));
    return input;
}

/// Makes an input the model, or appends it to the model.
void Add(const fs::path& file, Input input, Progress& progress, Inputs& inputs)
{
    std::move(input.steps.begin(), input.steps.end(), std::back_inserter(inputs.steps));
    if (inputs.read.empty())
        inputs.model = std::move(input.model);
    else
        inputs.steps.push_back(RunStep("Append " + file.filename().string(), progress,
                                       [&] { AppendModel(inputs.model, std::move(input.model)); }));
    inputs.read.push_back(file);
    std::move(input.files.begin(), input.files.end(), std::back_inserter(inputs.files));
}

/// Inputs may refer to the same image.
void RemoveDuplicates(std::vector<fs::path>& files)
{
    std::set<fs::path> known;
    std::erase_if(files, [&](const fs::path& file) { return !known.insert(fs::absolute(file)).second; });
}

}  // namespace

Inputs LoadInputs(const std::vector<fs::path>& files, const LoadOptions& options, const PluginLibrary& plugin,
                  Progress& progress, WorkState& state)
{
    Inputs inputs;
    for (const fs::path& file : files)
    {
        std::optional<Input> input;
        try
        {
            input = Read(file, options, plugin, progress, state);
        }
        catch (const std::exception& error)
        {
            if (!options.keepGoing)
                throw;
            inputs.skipped.push_back({file, state.DescribeError(error)});
            continue;
        }
        // An error from here on ends the work, since it leaves half a model.
        state.Enter(WorkState::Phase::Preparing, file);
        Add(file, std::move(*input), progress, inputs);
    }
    RemoveDuplicates(inputs.files);
    if (inputs.read.size() > 1)
        DropUnreachableNodes({*inputs.model.scene, inputs.model.supplement});  // each AppendSC() leaves a spare node
    return inputs;
}

}  // namespace Sceneprep
