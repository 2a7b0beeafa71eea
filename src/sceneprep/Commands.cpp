#include <sceneprep/Commands.h>

#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <sceneprep/ExportModel.h>
#include <sceneprep/FlattenSteps.h>
#include <sceneprep/ImportModel.h>
#include <sceneprep/PluginLibrary.h>
#include <sceneprep/Report.h>
#include <sceneprep/SceneTree.h>
#include <unistd.h>

#include <iostream>
#include <new>

namespace Sceneprep
{

namespace
{

PluginLibrary LoadPlugin(const Options& options)
{
    return PluginLibrary(options.plugin.empty() ? PluginLibrary::FindDefault() : options.plugin);
}

Progress MakeProgress(std::ostream& errors)
{
    return Progress(errors, &errors == &std::cerr && isatty(STDERR_FILENO) != 0);
}

ImportedModel ImportTimed(const std::filesystem::path& input, const ImportOptions& options,
                          Importing::SceneContainer& scene, Progress& progress, std::vector<StepResult>& steps)
{
    ImportedModel model;
    steps.push_back(RunStep("Import", progress, [&] { model = ImportModel(input, options, scene, progress); }));
    for (const std::string& note : model.notes)
        progress.Note(note);
    return model;
}

void Prepare(const Options& options, std::ostream& out, Progress& progress)
{
    const PrepareOptions& prepare = options.prepare;
    CheckReadable(prepare.input);
    CheckWritable(prepare.output);
    const PluginLibrary plugin = LoadPlugin(options);
    const std::unique_ptr<Importing::SceneContainer> scene = plugin.CreateScene();
    std::vector<StepResult> steps;

    const ImportOptions importOptions = {.separateGeometries = prepare.flatten};
    const ImportedModel model = ImportTimed(prepare.input, importOptions, *scene, progress, steps);
    const SceneStats before = CountScene(*scene);

    Pipeline pipeline;
    if (prepare.flatten)
        AddFlattenSteps(pipeline, {prepare.minSurfaces, prepare.maxVertices, prepare.ignoreAnimation});
    for (StepResult& step : pipeline.Run(*scene, progress))
        steps.push_back(std::move(step));

    std::vector<std::string> notes;
    steps.push_back(
        RunStep("Export", progress, [&] { notes = ExportModel(*scene, model.textures, prepare.output, progress); }));
    for (const std::string& note : notes)
        progress.Note(note);
    progress.Clear();

    out << ComparisonTable(before, CountScene(*scene)) << '\n' << TimesTable(steps);
}

void Inspect(const Options& options, std::ostream& out, Progress& progress)
{
    const InspectOptions& inspect = options.inspect;
    CheckReadable(inspect.input);
    const PluginLibrary plugin = LoadPlugin(options);
    const std::unique_ptr<Importing::SceneContainer> scene = plugin.CreateScene();
    std::vector<StepResult> steps;
    ImportTimed(inspect.input, {}, *scene, progress, steps);
    progress.Clear();

    const SceneStats stats = CountScene(*scene);
    if (inspect.json)
    {
        out << InspectionJson(inspect.input, stats, *scene, inspect.tree);
        return;
    }
    out << StatsTable(stats);
    if (inspect.tree)
        out << '\n' << TreeText(*scene);
}

void Dispatch(const Options& options, std::ostream& out, Progress& progress)
{
    switch (options.command)
    {
        case Command::Prepare:
            return Prepare(options, out, progress);
        case Command::Inspect:
            return Inspect(options, out, progress);
        case Command::Formats:
            out << FormatsText();
            return;
    }
}

}  // namespace

int RunCommand(const Options& options, std::ostream& out, std::ostream& errors)
{
    std::string problem;
    try
    {
        Progress progress = MakeProgress(errors);
        Dispatch(options, out, progress);
        return kDone;
    }
    catch (const ToolError& error)
    {
        problem = error.what();
    }
    catch (const std::bad_alloc&)
    {
        problem = fmt::format("{} needs more memory than there is; use a smaller model", SubjectOf(options));
    }
    catch (const std::exception& error)
    {
        problem =
            fmt::format("{} cannot be processed ({}); check the model", SubjectOf(options), OneLine(error.what()));
    }
    errors << "sceneprep: " << problem << '\n';
    return kUnusable;
}

std::string SubjectOf(const Options& options)
{
    switch (options.command)
    {
        case Command::Prepare:
            return options.prepare.input.string();
        case Command::Inspect:
            return options.inspect.input.string();
        case Command::Formats:
            break;
    }
    return "the list of formats";
}

}  // namespace Sceneprep
