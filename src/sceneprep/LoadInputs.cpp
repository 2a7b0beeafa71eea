#include <sceneprep/LoadInputs.h>

#include <sceneprep/AppendModel.h>
#include <sceneprep/Error.h>
#include <sceneprep/FlattenSteps.h>
#include <sceneprep/ImportModel.h>
#include <sceneprep/WorkState.h>

#include <utility>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

/// Reads one file; afterwards it is the scene, or is appended to it.
void LoadInput(const fs::path& file, const PluginLibrary& plugin, Progress& progress, LoadedInputs& loaded)
{
    std::unique_ptr<Importing::SceneContainer> scene = plugin.CreateScene();
    ImportedModel model;
    WorkState::Enter(WorkState::Phase::Reading, file);
    loaded.steps.push_back(
        RunStep("Import " + file.filename().string(), progress, [&] { model = ImportModel(file, *scene, progress); }));
    WorkState::Enter(WorkState::Phase::Preparing, file);

    loaded.notes.insert(loaded.notes.end(), model.notes.begin(), model.notes.end());
    if (loaded.inputs.empty())
    {
        loaded.scene = std::move(scene);
        loaded.textures = std::move(model.textures);
    }
    else
    {
        const LoadedModel first{*loaded.scene, loaded.textures, loaded.inputs.front()};
        const LoadedModel other{*scene, model.textures, file};
        loaded.steps.push_back(
            RunStep("Append " + file.filename().string(), progress, [&] { AppendModel(first, other); }));
    }
    loaded.inputs.push_back(file);
}

}  // namespace

LoadedInputs LoadInputs(const PrepareOptions& options, const PluginLibrary& plugin, Progress& progress)
{
    LoadedInputs loaded;
    loaded.leftOut = options.leftOut;
    for (const fs::path& file : options.inputs)
    {
        try
        {
            LoadInput(file, plugin, progress, loaded);
        }
        catch (const ToolError& error)
        {
            if (!options.keepGoing)
                throw;
            loaded.leftOut.push_back(file);
            loaded.problems.emplace_back(error.what());
        }
    }
    if (loaded.inputs.empty())
        throw ToolError(loaded.problems.back() + " (no input is left)");
    if (loaded.inputs.size() > 1)
        DropUnreachableNodes(*loaded.scene);  // appending leaves a spare node each time
    return loaded;
}

}  // namespace Sceneprep
