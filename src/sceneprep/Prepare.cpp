#include <sceneprep/Prepare.h>

#include <fmt/format.h>
#include <pipeline/steps/PrepareScene.h>
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
struct Pictures
{
    Report::Picture before;
    Report::Picture after;
};

void WriteReports(const PrepareCommand& options, const PrepareReport& report, const Pictures& pictures,
                  WorkState& state)
{
    if (!options.jsonFile.empty())
        WriteWhole(options.jsonFile, state, [&](std::ostream& file) { file << ReportJson(report); });
    if (!options.reportFile.empty())
        WriteWhole(options.reportFile, state,
                   [&](std::ostream& file) { Report::WritePage(file, report, pictures.before, pictures.after); });
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
             Pictures& pictures)
{
    Importing::SceneContainer& scene = *model.scene;
    report.before = MeasureInStep("Measure", scene, progress, report);
    for (const std::string& note : NotesOnTriangles(report.before.world))
        model.notes.Add(note);
    Show(std::move(model.notes), progress, report);

    state.Enter(WorkState::Phase::Preparing, model.file);
    if (!options.reportFile.empty())
        pictures.before = Report::TakePicture(scene, report.before.world);
    std::vector<StepResult> results = Pipeline::PrepareScene(scene, options.steps, model.supplement, progress).steps;
    report.steps.insert(report.steps.end(), std::make_move_iterator(results.begin()),
                        std::make_move_iterator(results.end()));
    report.after = MeasureInStep("Measure again", scene, progress, report);
    report.differences = FindDifferences(report.before.world, report.after.world, FlipsFaces(options.steps));
    if (!options.reportFile.empty())
        pictures.after = Report::TakePicture(scene, report.after.world);
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
    Pictures pictures;
    Process(options, inputs.model, context.state, progress, report, pictures);
    if (!options.strict || report.differences.empty())
        Export(options, inputs.model, context.state, progress, report);
    const std::string refusal = RefusalOf(options, report, {});

    WriteReports(options, report, pictures, context.state);
    progress.Clear();
    context.out << ReportText(report);
    PrintProblems(inputs.skipped, progress, context.errors);
    if (!refusal.empty())
        throw ToolError(fmt::format("cannot write {}: {}", options.output.string(), refusal));
    return report.skipped.empty() ? kDone : kUnusable;
}

}  // namespace Sceneprep
