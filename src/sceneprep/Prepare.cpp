#include <sceneprep/Prepare.h>

#include <fmt/format.h>
#include <pipeline/steps/PrepareScene.h>
#include <sceneprep/ReportViews.h>
#include <sceneprep/export/ExportModel.h>
#include <sceneprep/import/LoadInputs.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/report/PageText.h>
#include <sceneprep/report/PrepareReport.h>
#include <sceneprep/report/Proof.h>
#include <sceneprep/report/ReportPage.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/FreedMemory.h>
#include <sceneprep/run/PlaceFiles.h>

#include <iterator>

namespace Sceneprep
{

using Pipeline::NotesOnTriangles;
using Pipeline::RunStep;
using Pipeline::StepResult;

namespace
{

namespace fs = std::filesystem;

void CheckFiles(const PrepareCommand& options)
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
        throw ToolError("this build of sceneprep has no HTML report; use --json, or install npm and build again");
}

/// Shows notes and adds them to the report.
void Show(Notes notes, Progress& progress, PrepareReport& report)
{
    progress.Show(notes);
    report.notes.Append(std::move(notes));
}

void PrintProblems(const std::vector<SkippedInput>& skipped, Progress& progress, std::ostream& errors)
{
    progress.Clear();
    for (const SkippedInput& input : skipped)
        errors << ErrorLine(input.problem);
}

/// Returns the losses among the changes of steps.
Notes LossesOf(const std::vector<StepResult>& steps)
{
    Notes losses;
    for (const StepResult& step : steps)
    {
        for (const Pipeline::Change& change : step.changes)
        {
            if (!change.loss.empty())
                losses.AddLoss(change.loss, change.what, change.count);
        }
    }
    return losses;
}

SceneFigures MeasureInStep(const char* name, Importing::SceneContainer& scene, Progress& progress,
                           PrepareReport& report)
{
    SceneFigures figures;
    report.steps.push_back(RunStep(
        name, progress, [&] { figures = FiguresOf(scene, [&progress](double part) { progress.Update(part); }); }));
    return figures;
}

bool FlipsFaces(const Pipeline::PrepareOptions& steps) { return steps.checkOrientation || steps.fixCulling; }

/// What the HTML report shows of the scene before and after the steps.
struct Views
{
    Report::PageView before;
    Report::PageView after;
};

fs::path FolderOf(const fs::path& file) { return fs::absolute(file).parent_path(); }

/// @param references  the folder that references to image files are relative to
Report::PageView ViewOf(const char* step, const Model& model, const fs::path& references, const fs::path& output,
                        WorkState& state, Progress& progress)
{
    const TemporaryFolder folder(FolderOf(output), state);
    Report::PageView view;
    RunStep(step, progress, [&] {
        view = WriteView(model, references, folder.Path(), [&progress](double part) { progress.Update(part); });
    });
    return view;
}

/// Shows the output itself if it is a file that a browser can display alone.
Report::PageView ViewAfter(const PrepareCommand& options, const Model& model, bool isExported, bool isWritten,
                           WorkState& state, Progress& progress)
{
    if (isWritten && !options.externalTextures && CanOpenView(model, options.output))
        return OpenView(options.output);
    return ViewOf("View the result", model, FolderOf(isExported ? options.output : model.file), options.output, state,
                  progress);
}

void WriteReports(const PrepareCommand& options, const PrepareReport& report, Views& views, WorkState& state)
{
    if (!options.jsonFile.empty())
        WriteWhole(options.jsonFile, state, [&](std::ostream& file) { file << ReportJson(report); });
    if (!options.reportFile.empty())
        WriteWhole(options.reportFile, state,
                   [&](std::ostream& file) { Report::WritePage(file, report, views.before, views.after); });
}

PrepareReport BeginReport(const PrepareCommand& options, const RunContext& context, const Inputs& inputs)
{
    PrepareReport report;
    report.inputs = inputs.read;
    report.skipped = context.crashedInputs;
    for (const SkippedInput& input : inputs.skipped)
        report.skipped.push_back(input.file);
    report.output = options.output;
    report.steps = inputs.steps;
    return report;
}

void Process(const PrepareCommand& options, Model& model, WorkState& state, Progress& progress, PrepareReport& report,
             Views& views)
{
    Importing::SceneContainer& scene = *model.scene;
    report.before = MeasureInStep("Measure", scene, progress, report);
    for (const std::string& note : NotesOnTriangles(report.before.world))
        model.notes.Add(note);
    Show(std::move(model.notes), progress, report);

    report.findings = FindImprovements(model);
    state.Enter(WorkState::Phase::Preparing, model.file);
    if (!options.reportFile.empty())
        views.before = ViewOf("View the input", model, FolderOf(model.file), options.output, state, progress);
    Pipeline::PrepareResult result = Pipeline::PrepareScene(scene, options.steps, model.supplement, progress);
    Show(LossesOf(result.steps), progress, report);
    report.steps.insert(report.steps.end(), std::make_move_iterator(result.steps.begin()),
                        std::make_move_iterator(result.steps.end()));
    Notes unused;
    for (const std::string& pattern : result.unusedKeeps)
        unused.Add(fmt::format("--keep '{}' matches no node", pattern));
    Show(std::move(unused), progress, report);
    report.reasons = Pipeline::FindMergeReasons({scene, model.supplement}, options.steps);
    report.after = MeasureInStep("Measure again", scene, progress, report);
    report.differences = FindDifferences(report.before.world, report.after.world, FlipsFaces(options.steps));
}

/// Returns why `strict` refuses to write the output; empty if it does not.
std::string RefusalOf(const PrepareCommand& options, const PrepareReport& report, const Notes& exportNotes)
{
    if (!options.strict)
        return {};
    if (!report.differences.empty())
        return fmt::format("the result differs from the input ({}); choose other steps, or omit --strict",
                           fmt::join(report.differences, ", "));
    Notes notes = report.notes;
    notes.Append(Notes(exportNotes));
    const std::vector<std::string> losses = notes.LossesExcept(options.allowedLosses);
    if (losses.empty())
        return {};
    return fmt::format("this would be lost: {}; allow it by --allow-loss NAME, or omit --strict",
                       fmt::join(losses, ", "));
}

/// Writes the output unless it is refused, which is not known before the notes of the export.
void Export(const PrepareCommand& options, Model& model, WorkState& state, Progress& progress, PrepareReport& report)
{
    state.Enter(WorkState::Phase::Writing, options.output);
    RebaseReferences(*model.scene, model.file, options.output, model.textures);
    Notes notes;
    report.steps.push_back(RunStep("Export", progress, [&] {
        ReturnFreedMemory();
        notes = ExportModel(model, options.output, progress, state,
                            {.others = {options.jsonFile, options.reportFile},
                             .externalTextures = options.externalTextures,
                             .gpuInstancing = options.gpuInstancing,
                             .accept = [&](const Notes& made) { return RefusalOf(options, report, made).empty(); }});
    }));
    Show(std::move(notes), progress, report);
}

}  // namespace

int Prepare(const PrepareCommand& options, const PluginLibrary& plugin, const RunContext& context, Progress& progress)
{
    CheckFiles(options);
    Inputs inputs = LoadInputs(options.inputs, {.keepGoing = options.keepGoing, .scene = options.scene}, plugin,
                               progress, context.state);
    if (inputs.read.empty())
    {
        PrintProblems(inputs.skipped, progress, context.errors);
        throw ToolError("none of the inputs could be read");
    }

    PrepareReport report = BeginReport(options, context, inputs);
    Views views;
    Process(options, inputs.model, context.state, progress, report, views);
    const bool isExported = !options.strict || report.differences.empty();
    if (isExported)
        Export(options, inputs.model, context.state, progress, report);
    report.refusal = RefusalOf(options, report, {});

    if (!options.reportFile.empty())
        views.after = ViewAfter(options, inputs.model, isExported, report.refusal.empty(), context.state, progress);
    WriteReports(options, report, views, context.state);
    progress.Clear();
    context.out << ReportText(report);
    PrintProblems(inputs.skipped, progress, context.errors);
    if (!report.refusal.empty())
        throw ToolError(fmt::format("cannot write {}: {}", options.output.string(), report.refusal));
    return report.skipped.empty() ? kDone : kUnusable;
}

}  // namespace Sceneprep
