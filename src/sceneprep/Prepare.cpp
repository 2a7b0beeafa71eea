#include <sceneprep/Prepare.h>

#include <fmt/format.h>
#include <pipeline/steps/PrepareSteps.h>
#include <sceneprep/export/ExportModel.h>
#include <sceneprep/import/ImportModel.h>
#include <sceneprep/import/LoadInputs.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/report/PageText.h>
#include <sceneprep/report/PrepareReport.h>
#include <sceneprep/report/Proof.h>
#include <sceneprep/report/ReportPage.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/FreedMemory.h>
#include <sceneprep/run/PlaceFiles.h>
#include <sceneprep/run/WorkState.h>

#include <iterator>

namespace Sceneprep
{

using Pipeline::MakePipeline;
using Pipeline::NotesOnTriangles;
using Pipeline::RunStep;
using Pipeline::StepOptions;
using Pipeline::StepResult;

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
    if (options.reportFile.empty())
        return;
    CheckFolderOf(options.reportFile);
    if (!Report::HasPage())
        throw ToolError("this sceneprep was built without the page for --report; use --json, or build it with npm");
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
        errors << ErrorLine(problem);
}

SceneFigures MeasureInStep(const char* name, Importing::SceneContainer& scene, Progress& progress,
                           PrepareReport& report)
{
    SceneFigures figures;
    report.steps.push_back(RunStep(
        name, progress, [&] { figures = FiguresOf(scene, [&progress](double part) { progress.Update(part); }); }));
    return figures;
}

bool TurnsFaces(const StepOptions& steps) { return steps.checkOrientation || steps.fixCulling; }

/// What the page shows of the scene before and after the steps.
struct Pictures
{
    Report::Picture before;
    Report::Picture after;
};

void WriteReports(const PrepareOptions& options, const PrepareReport& report, const Pictures& pictures)
{
    if (!options.jsonFile.empty())
        WriteWhole(options.jsonFile, [&](std::ostream& file) { file << ReportJson(report); });
    if (!options.reportFile.empty())
        WriteWhole(options.reportFile,
                   [&](std::ostream& file) { Report::WritePage(file, report, pictures.before, pictures.after); });
}

PrepareReport BeginReport(const PrepareOptions& options, const LoadedInputs& loaded)
{
    PrepareReport report;
    report.inputs = loaded.inputs;
    report.leftOut = loaded.leftOut;
    report.output = options.output;
    report.steps = loaded.steps;
    return report;
}

void Process(const PrepareOptions& options, LoadedInputs& loaded, Progress& progress, PrepareReport& report,
             Pictures& pictures)
{
    Importing::SceneContainer& scene = *loaded.scene;
    report.before = MeasureInStep("Measure", scene, progress, report);
    Tell(loaded.notes, progress, report);
    Tell(NotesOnTriangles(report.before.world), progress, report);

    WorkState::Enter(WorkState::Phase::Preparing, loaded.inputs.front());
    if (!options.reportFile.empty())
        pictures.before = Report::TakePicture(scene, report.before.world);
    std::vector<StepResult> results = MakePipeline(options.steps).Run(scene, progress);
    report.steps.insert(report.steps.end(), std::make_move_iterator(results.begin()),
                        std::make_move_iterator(results.end()));
    report.after = MeasureInStep("Measure again", scene, progress, report);
    report.differences = FindDifferences(report.before.world, report.after.world, TurnsFaces(options.steps));
    if (!options.reportFile.empty())
        pictures.after = Report::TakePicture(scene, report.after.world);
}

void Export(const PrepareOptions& options, LoadedInputs& loaded, Progress& progress, PrepareReport& report)
{
    WorkState::Enter(WorkState::Phase::Writing, options.output);
    RebaseReferences(*loaded.scene, loaded.inputs.front(), options.output, loaded.textures);
    std::vector<std::string> notes;
    report.steps.push_back(RunStep("Export", progress, [&] {
        ReturnFreedMemory();
        notes = ExportModel(*loaded.scene, loaded.textures, options.output, progress,
                            {options.jsonFile, options.reportFile});
    }));
    Tell(notes, progress, report);
}

}  // namespace

int Prepare(const PrepareOptions& options, const PluginLibrary& plugin, std::ostream& out, std::ostream& errors,
            Progress& progress)
{
    CheckFiles(options);
    LoadedInputs loaded = LoadInputs(options.inputs, options.keepGoing, plugin, progress);
    loaded.leftOut.insert(loaded.leftOut.begin(), options.leftOut.begin(), options.leftOut.end());
    if (loaded.inputs.empty())
    {
        TellProblems(loaded.problems, progress, errors);
        throw ToolError("no input is left; name one that can be read");
    }

    PrepareReport report = BeginReport(options, loaded);
    Pictures pictures;
    Process(options, loaded, progress, report, pictures);
    const bool isRefused = options.strict && !report.differences.empty();
    if (!isRefused)
        Export(options, loaded, progress, report);

    WriteReports(options, report, pictures);
    progress.Clear();
    out << ReportText(report);
    TellProblems(loaded.problems, progress, errors);
    if (isRefused)
        throw ToolError(fmt::format("{} would show another world ({}); leave steps out, or --strict",
                                    options.output.string(), fmt::join(report.differences, ", ")));
    return report.leftOut.empty() ? kDone : kUnusable;
}

}  // namespace Sceneprep
