#include <sceneprep/Prepare.h>

#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <sceneprep/ExportModel.h>
#include <sceneprep/ImportModel.h>
#include <sceneprep/LoadInputs.h>
#include <sceneprep/PlaceFiles.h>
#include <sceneprep/PrepareReport.h>
#include <sceneprep/PrepareSteps.h>
#include <sceneprep/Proof.h>
#include <sceneprep/TextureReferences.h>
#include <sceneprep/WorkState.h>

#include <iterator>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

void CheckFiles(const PrepareOptions& options)
{
    for (const fs::path& input : options.inputs)
    {
        if (!options.keepGoing)
            CheckReadable(input);
    }
    CheckWritable(options.output);
    if (!options.jsonFile.empty())
        CheckFolderOf(options.jsonFile);
}

std::vector<std::string> NotesOnTriangles(const WorldMeasure& world)
{
    std::vector<std::string> notes;
    if (world.broken > 0)
        notes.push_back(fmt::format("triangles have corners that are infinite or no number ({})", world.broken));
    if (world.degenerate > 0)
        notes.push_back(fmt::format("triangles have no area ({})", world.degenerate));
    return notes;
}

void Tell(const std::vector<std::string>& notes, Progress& progress, PrepareReport& report)
{
    for (const std::string& note : notes)
        progress.Note(note);
    report.notes.insert(report.notes.end(), notes.begin(), notes.end());
}

void TellProblems(const std::vector<std::string>& problems, Progress& progress, std::ostream& errors)
{
    progress.Clear();
    for (const std::string& problem : problems)
        errors << "sceneprep: " << problem << '\n';
}

bool TurnsFaces(const StepOptions& steps) { return steps.checkOrientation || steps.fixCulling; }

void CheckProof(const PrepareOptions& options, const PrepareReport& report)
{
    if (!options.strict || report.differences.empty())
        return;
    throw ToolError(fmt::format("{} would show another world ({}); leave steps out, or --strict",
                                options.output.string(), fmt::join(report.differences, ", ")));
}

}  // namespace

int Prepare(const PrepareOptions& options, const PluginLibrary& plugin, std::ostream& out, std::ostream& errors,
            Progress& progress)
{
    CheckFiles(options);
    LoadedInputs loaded = LoadInputs(options, plugin, progress);
    if (loaded.inputs.empty())
    {
        TellProblems(loaded.problems, progress, errors);
        throw ToolError("no input is left; name one that can be read");
    }
    Importing::SceneContainer& scene = *loaded.scene;

    PrepareReport report;
    report.inputs = loaded.inputs;
    report.leftOut = loaded.leftOut;
    report.output = options.output;
    report.steps = loaded.steps;
    report.before = FiguresOf(scene);
    Tell(loaded.notes, progress, report);
    Tell(NotesOnTriangles(report.before.world), progress, report);

    WorkState::Enter(WorkState::Phase::Preparing, loaded.inputs.front());
    std::vector<StepResult> results = MakePipeline(options.steps).Run(scene, progress);
    report.steps.insert(report.steps.end(), std::make_move_iterator(results.begin()),
                        std::make_move_iterator(results.end()));
    report.after = FiguresOf(scene);
    report.differences = FindDifferences(report.before.world, report.after.world, TurnsFaces(options.steps));
    CheckProof(options, report);

    WorkState::Enter(WorkState::Phase::Writing, options.output);
    RebaseReferences(scene, loaded.inputs.front(), options.output, loaded.textures);
    std::vector<std::string> notes;
    report.steps.push_back(
        RunStep("Export", progress, [&] { notes = ExportModel(scene, loaded.textures, options.output, progress); }));
    Tell(notes, progress, report);
    if (!options.jsonFile.empty())
        WriteWhole(options.jsonFile, [&](std::ostream& file) { file << ReportJson(report); });

    progress.Clear();
    out << ReportText(report);
    TellProblems(loaded.problems, progress, errors);
    return report.leftOut.empty() ? kDone : kUnusable;
}

}  // namespace Sceneprep
