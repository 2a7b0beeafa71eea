#include <sceneprep/batch/RunBatch.h>

#include <fmt/format.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/batch/BatchIndex.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/OtherProgram.h>
#include <sceneprep/run/PlaceFiles.h>

#include <system_error>

namespace Sceneprep::Batch
{

namespace
{

namespace fs = std::filesystem;

/// The models of a batch and what Ninja needs.
struct Plan
{
    std::vector<ModelFile> files;
    std::vector<Edge> edges;  ///< [files]
    NinjaSettings settings;
};

fs::path AbsolutePath(const fs::path& path) { return fs::absolute(path).lexically_normal(); }

Edge EdgeFor(const ModelFile& file, const fs::path& models, const fs::path& outputs)
{
    const fs::path output = outputs / file.output;
    const auto sideFile = [&](const char* extension) { return (outputs / "reports" / file.output) += extension; };
    return {.name = file.input.string(),
            .input = models / file.input,
            .output = output,
            .report = sideFile(".json"),
            .depfile = sideFile(".d"),
            .log = sideFile(".log"),
            .status = sideFile(".status")};
}

/// All paths are absolute, so that Ninja recognises earlier outputs regardless of the working directory.
Plan MakePlan(const BatchCommand& command)
{
    const fs::path models = AbsolutePath(command.folder);
    const fs::path outputs = AbsolutePath(command.output);
    Plan plan;
    plan.files = NameOutputs(FindModels(models, outputs, ListReadExtensions()), command.format);
    if (plan.files.empty())
        throw ToolError(fmt::format("there are no model files below {}; 'sceneprep formats' lists the extensions",
                                    command.folder.string()));
    for (const ModelFile& file : plan.files)
        plan.edges.push_back(EdgeFor(file, models, outputs));
    plan.settings = {.program = AbsolutePath(command.program),
                     .dependencies = {AbsolutePath(command.plugin)},
                     .arguments = command.arguments,
                     .folder = outputs};
    return plan;
}

/// Creates the folders here, because commands may be run without Ninja.
void CreateFolders(const Plan& plan)
{
    for (const Edge& edge : plan.edges)
    {
        for (const fs::path& folder : {edge.output.parent_path(), edge.report.parent_path()})
        {
            std::error_code error;
            fs::create_directories(folder, error);
            if (error)
                throw ToolError(fmt::format("cannot create the folder {}: {}; choose another output folder",
                                            folder.string(), error.message()));
        }
    }
}

void RunNinja(const BatchCommand& command, const Plan& plan)
{
    std::vector<std::string> arguments = {"ninja", "-C", plan.settings.folder.string(), "-k", "0"};
    if (command.jobs > 0)
        arguments.insert(arguments.end(), {"-j", std::to_string(command.jobs)});
    if (command.quiet)
        arguments.emplace_back("--quiet");
    const std::optional<int> status = RunOtherProgram(arguments);
    if (!status)
        throw ToolError("cannot run ninja: it is not installed; install Debian's package ninja-build");
    if (*status > 128)
        throw ToolError("ninja was stopped; run the same command again to continue");
}

}  // namespace

int RunBatch(const BatchCommand& command, const RunContext& context)
{
    const Plan plan = MakePlan(command);
    const std::string ninjaText = NinjaText(plan.edges, plan.settings);
    if (command.print)
    {
        context.out << ninjaText;
        return kDone;
    }
    CreateFolders(plan);
    if (!command.collect)
    {
        WriteWhole(plan.settings.folder / "build.ninja", context.state, [&](std::ostream& file) { file << ninjaText; });
        RunNinja(command, plan);
    }
    std::vector<ModelResult> results;
    for (std::size_t i = 0; i < plan.edges.size(); ++i)
        results.push_back(ReadResult(plan.edges[i], plan.files[i]));
    WriteWhole(plan.settings.folder / "index.json", context.state, [&](std::ostream& file) {
        file << IndexAsJson(results).dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    });
    context.out << ResultTable(results);
    return AreAllDone(results) ? kDone : kUnusable;
}

}  // namespace Sceneprep::Batch
