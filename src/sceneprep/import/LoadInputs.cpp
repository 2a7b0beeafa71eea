#include <sceneprep/import/LoadInputs.h>

#include <pipeline/steps/DropUnreachableNodes.h>
#include <sceneprep/import/AppendModel.h>
#include <sceneprep/import/OpenModel.h>
#include <sceneprep/import/gltf/DataUri.h>
#include <sceneprep/model/Uri.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/FreedMemory.h>

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
    std::vector<fs::path> bufferFiles;
};

/// Returns the files of buffers of a glTF file, which may not be valid.
std::vector<fs::path> BufferFilesOf(const OpenedModel& opened)
{
    std::vector<fs::path> files;
    const auto* gltf = std::get_if<GltfFile>(&opened);
    if (gltf == nullptr || !gltf->document.is_object() || !gltf->document.contains("buffers"))
        return files;
    for (const Json& buffer : gltf->document["buffers"])
    {
        const bool hasUri = buffer.is_object() && buffer.contains("uri") && buffer["uri"].is_string();
        if (hasUri && !GltfImport::IsDataUri(buffer["uri"].get_ref<const std::string&>()))
            files.push_back(gltf->path.parent_path() / DecodeUri(buffer["uri"].get<std::string>()));
    }
    return files;
}

/// Reads a file.
/// @throws std::bad_alloc if Assimp failed since it ran out of memory, whatever reason it gives.
OpenedModel Open(const fs::path& file, Progress& progress, const WorkState& state)
{
    try
    {
        return OpenModel(file, progress);
    }
    catch (const ToolError&)
    {
        if (state.RanOutOfMemory())
            throw std::bad_alloc();
        throw;
    }
}

Input Read(const fs::path& file, const LoadOptions& options, const PluginLibrary& plugin, Progress& progress,
           WorkState& state)
{
    state.Enter(WorkState::Phase::Reading, file);
    Input input;
    input.model.scene = plugin.CreateScene();
    std::optional<OpenedModel> opened;
    input.steps.push_back(
        RunStep("Read " + file.filename().string(), progress, [&] { opened = Open(file, progress, state); }));
    input.bufferFiles = BufferFilesOf(*opened);
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
    std::move(input.bufferFiles.begin(), input.bufferFiles.end(), std::back_inserter(inputs.bufferFiles));
    if (inputs.read.empty())
        inputs.model = std::move(input.model);
    else
        inputs.steps.push_back(RunStep("Append " + file.filename().string(), progress,
                                       [&] { AppendModel(inputs.model, std::move(input.model)); }));
    inputs.read.push_back(file);
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
    if (inputs.read.size() > 1)
        DropUnreachableNodes({*inputs.model.scene, inputs.model.supplement});  // each AppendSC() leaves a spare node
    return inputs;
}

}  // namespace Sceneprep
