#include <sceneprep/Commands.h>

#include <sceneprep/Prepare.h>
#include <sceneprep/import/ImportModel.h>
#include <sceneprep/report/Report.h>
#include <sceneprep/report/SceneTree.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/StandardStreams.h>
#include <sceneprep/run/WorkState.h>
#include <unistd.h>

#include <iostream>
#include <new>

namespace Sceneprep
{

using Pipeline::CountScene;
using Pipeline::Measure;
using Pipeline::NotesOnTriangles;
using Pipeline::RunStep;
using Pipeline::WorldMeasure;

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

void Inspect(const Options& options, std::ostream& out, Progress& progress)
{
    const InspectOptions& inspect = options.inspect;
    CheckReadable(inspect.input);
    const PluginLibrary plugin = LoadPlugin(options);
    Model model;
    model.scene = plugin.CreateScene();
    Importing::SceneContainer& scene = *model.scene;
    WorkState::Enter(WorkState::Phase::Reading, inspect.input);
    RunStep("Import", progress, [&] { ImportModel(inspect.input, model, progress); });
    const WorldMeasure world = Measure(scene);
    for (const std::string& note : NotesOnTriangles(world))
        model.notes.Add(note);
    for (const Note& note : model.notes.All())
        progress.Note(note.text);
    progress.Clear();

    if (inspect.json)
    {
        out << InspectionJson(inspect.input, scene, world, inspect.tree);
        return;
    }
    out << StatsTable(CountScene(scene)) << WorldTable({world});
    if (inspect.tree)
        out << '\n' << TreeText(scene);
}

int Dispatch(const Options& options, std::ostream& out, std::ostream& errors, Progress& progress)
{
    switch (options.command)
    {
        case Command::Prepare:
            return Prepare(options.prepare, LoadPlugin(options), out, errors, progress);
        case Command::Inspect:
            Inspect(options, out, progress);
            break;
        case Command::Formats:
            out << FormatsText();
            break;
    }
    return kDone;
}

}  // namespace

int RunCommand(const Options& options, std::ostream& out, std::ostream& errors)
{
    WorkState::Enter(WorkState::Phase::Starting, SubjectOf(options));
    std::ostream nowhere(nullptr);
    std::string problem;
    try
    {
        Progress progress = options.quiet ? Progress(nowhere, false) : MakeProgress(errors);
        const int status = Dispatch(options, out, errors, progress);
        if (HasArrived(out))
            return status;
        problem = kNoStdout;
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
    errors << ErrorLine(problem);
    return kUnusable;
}

std::string SubjectOf(const Options& options)
{
    switch (options.command)
    {
        case Command::Prepare:
            return options.prepare.inputs.empty() ? "" : options.prepare.inputs.front().string();
        case Command::Inspect:
            return options.inspect.input.string();
        case Command::Formats:
            break;
    }
    return "the list of formats";
}

}  // namespace Sceneprep
