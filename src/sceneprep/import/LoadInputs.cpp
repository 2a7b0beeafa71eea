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

/// One model file, read and not yet part of the scene.
struct ReadInput
{
    std::unique_ptr<Importing::SceneContainer> scene;
    ImportedModel model;
    std::vector<StepResult> steps;
};

ReadInput Read(const fs::path& file, const PluginLibrary& plugin, Progress& progress)
{
    WorkState::Enter(WorkState::Phase::Reading, file);
    ReadInput input{.scene = plugin.CreateScene(), .model = {}, .steps = {}};
    std::optional<ModelSource> source;
    input.steps.push_back(
        RunStep("Read " + file.filename().string(), progress, [&] { source.emplace(file, progress); }));
    input.steps.push_back(RunStep("Import " + file.filename().string(), progress, [&] {
        input.model = ImportModel(std::move(*source), *input.scene, [&](double part) { progress.Update(part); });
        source.reset();
        ReturnFreedMemory();
    }));
    return input;
}

/// As Read(), whatever goes wrong.
/// @return none when the file cannot be read; `problem` says why then.
std::optional<ReadInput> TryToRead(const fs::path& file, const PluginLibrary& plugin, Progress& progress,
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

/// Makes the input the scene, or a part of it.
void Add(const fs::path& file, ReadInput input, Progress& progress, LoadedInputs& loaded)
{
    WorkState::Enter(WorkState::Phase::Preparing, file);
    std::move(input.steps.begin(), input.steps.end(), std::back_inserter(loaded.steps));
    loaded.notes.insert(loaded.notes.end(), input.model.notes.begin(), input.model.notes.end());
    if (loaded.inputs.empty())
    {
        loaded.scene = std::move(input.scene);
        loaded.textures = std::move(input.model.textures);
    }
    else
    {
        const LoadedModel first{*loaded.scene, loaded.textures, loaded.inputs.front()};
        const LoadedModel other{*input.scene, input.model.textures, file};
        loaded.steps.push_back(
            RunStep("Append " + file.filename().string(), progress, [&] { AppendModel(first, other); }));
    }
    loaded.inputs.push_back(file);
}

}  // namespace

LoadedInputs LoadInputs(const std::vector<fs::path>& inputs, bool keepGoing, const PluginLibrary& plugin,
                        Progress& progress)
{
    LoadedInputs loaded;
    for (const fs::path& file : inputs)
    {
        std::string problem;
        std::optional<ReadInput> input =
            keepGoing ? TryToRead(file, plugin, progress, problem) : Read(file, plugin, progress);
        if (input)
        {
            // What fails from here on leaves half a scene: it ends the work.
            Add(file, std::move(*input), progress, loaded);
            continue;
        }
        loaded.leftOut.push_back(file);
        loaded.problems.push_back(problem);
    }
    if (loaded.inputs.size() > 1)
        DropUnreachableNodes(*loaded.scene);  // appending leaves a spare node each time
    return loaded;
}

}  // namespace Sceneprep
