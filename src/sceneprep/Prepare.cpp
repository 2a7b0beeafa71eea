#include <sceneprep/Prepare.h>

#include <fmt/format.h>
#include <pipeline/steps/PrepareScene.h>
#include <sceneprep/ReportViews.h>
#include <sceneprep/Verification.h>
#include <sceneprep/export/ExportModel.h>
#include <sceneprep/import/LoadInputs.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/report/Depfile.h>
#include <sceneprep/report/PageText.h>
#include <sceneprep/report/PrepareReport.h>
#include <sceneprep/report/Proof.h>
#include <sceneprep/report/ReportPage.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/FreedMemory.h>
#include <sceneprep/run/PlaceFiles.h>

#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

namespace Sceneprep
{

using Pipeline::NotesOnTriangles;
using Pipeline::RunStep;
using Pipeline::StepResult;

namespace
{

namespace fs = std::filesystem;

bool IsStdout(const fs::path& file) { return file == "-"; }

void CheckFiles(const PrepareCommand& options)
{
    for (const fs::path& input : options.inputs)
    {
        if (!options.keepGoing)
            CheckReadable(input);
    }
    CheckWritable(options.output);
    if (!options.jsonFile.empty() && !IsStdout(options.jsonFile))
        CheckFolderOf(options.jsonFile);
    if (!options.depfile.empty())
        CheckFolderOf(options.depfile);
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
Report::PageView ViewAfter(const PrepareCommand& options, const Model& model, bool isWritten, WorkState& state,
                           Progress& progress)
{
    if (isWritten && !options.externalTextures && CanOpenView(model, options.output))
        return OpenView(options.output);
    return ViewOf("View the result", model, FolderOf(options.output), options.output, state, progress);
}

void WriteReports(const PrepareCommand& options, const PrepareReport& report, Views& views, WorkState& state)
{
    if (!options.jsonFile.empty() && !IsStdout(options.jsonFile))
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
    report.output = options.dryRun ? fs::path() : options.output;
    report.steps = inputs.steps;
    return report;
}

/// Compares the scene before and after the steps, where the output is not read back.
void CompareMeasures(const PrepareReport& report, bool facesMayTurn, Verdict& verdict)
{
    verdict.compared = {"the scene before the export: number of triangles, bounds, area, volume"};
    for (std::string& text : FindDifferences(report.before.world, report.after.world, facesMayTurn))
        verdict.differences.push_back({"measure", "", std::move(text)});
}

void Process(const PrepareCommand& options, Inputs& inputs, WorkState& state, Progress& progress, PrepareReport& report,
             Verification& verification, Views& views)
{
    Model& model = inputs.model;
    Importing::SceneContainer& scene = *model.scene;
    report.before = MeasureInStep("Measure", scene, progress, report);
    report.steps.push_back(RunStep("Record the input", progress, [&] { verification.RecordInput(inputs); }));
    report.before.SetViewer(verification.Before());
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
    if (!verification.ReadsOutput())
        CompareMeasures(report, FlipsFaces(options.steps), verification.Result());
}

/// Returns the files that the inputs refer to, without the inputs: build systems know those, and Ninja cannot read
/// every name in a dependency file.
std::vector<fs::path> ReferencedFiles(const PrepareCommand& options, const Inputs& inputs)
{
    std::vector<fs::path> files = inputs.files;
    for (const fs::path& input : options.inputs)
        std::erase(files, input.lexically_normal());
    return files;
}

/// Returns how many times as much the output is; 0 if the input is empty.
double GrowthOf(std::uintmax_t before, std::uintmax_t after)
{
    return before == 0 ? 0 : static_cast<double>(after) / static_cast<double>(before);
}

std::string GrowthText(const char* what, std::uintmax_t before, std::uintmax_t after)
{
    return fmt::format("{} grow from {} to {} bytes, {:.3g} times as much", what, before, after,
                       GrowthOf(before, after));
}

/// Returns what grows more than a limit, one line each.
std::vector<std::string> FindGrowth(const PrepareReport& report, double limit, std::uintmax_t least)
{
    std::vector<std::string> found;
    const auto check = [&](const char* what, std::uintmax_t before, std::uintmax_t after) {
        if (after >= least && GrowthOf(before, after) > limit)
            found.push_back(GrowthText(what, before, after));
    };
    check("the files", report.before.viewer.fileBytes, report.after.viewer.fileBytes);
    check("vertices and indices", report.before.viewer.gpuBytes, report.after.viewer.gpuBytes);
    return found;
}

void NoteGrowth(PrepareReport& report, Progress& progress)
{
    constexpr double kTwice = 2;
    constexpr std::uintmax_t kSmall = 100'000;  // hardly worth a note
    Notes notes;
    for (std::string& text : FindGrowth(report, kTwice, kSmall))
        notes.Add(std::move(text));
    Show(std::move(notes), progress, report);
}

/// Joins the first texts of a list, and says how many more there are.
std::string FirstOf(std::vector<std::string> texts)
{
    constexpr std::size_t kMost = 3;
    const std::size_t more = texts.size() > kMost ? texts.size() - kMost : 0;
    texts.resize(texts.size() - more);
    return fmt::format("{}{}", fmt::join(texts, "; "), more > 0 ? fmt::format("; and {} more", more) : "");
}

/// Returns why the output is not written; empty if it is.
std::string RefusalOf(const PrepareCommand& options, const PrepareReport& report)
{
    if (options.maxGrowth > 0)
    {
        const std::vector<std::string> growth = FindGrowth(report, options.maxGrowth, 0);
        if (!growth.empty())
            return fmt::format("{}; choose other steps, or raise --max-growth", fmt::join(growth, ", "));
    }
    if (!options.strict)
        return {};
    if (!report.verdict.differences.empty())
        return fmt::format("the result differs from the input ({}); choose other steps, or omit --strict",
                           FirstOf(TextsOf(report.verdict.differences)));
    const std::vector<std::string> losses = report.notes.LossesExcept(options.allowedLosses);
    if (losses.empty())
        return {};
    return fmt::format("this would be lost: {}; allow it by --allow-loss NAME, or omit --strict",
                       fmt::join(losses, ", "));
}

/// Frees the model; once it has been written, only the HTML report shows it.
void Free(Model& model)
{
    model = Model();
    ReturnFreedMemory();
}

/// Writes the output into a temporary folder, checks it there, and moves it into place unless it is refused or the run
/// is a dry run.
/// @return why it is refused; empty if it is not.
std::string Export(const PrepareCommand& options, Model& model, WorkState& state, Progress& progress,
                   PrepareReport& report, Verification& verification)
{
    state.Enter(WorkState::Phase::Writing, options.output);
    RebaseReferences(*model.scene, model.file, options.output, model.textures);
    std::optional<WrittenModel> written;
    report.steps.push_back(RunStep("Export", progress, [&] {
        ReturnFreedMemory();
        written.emplace(model, options.output, progress, state,
                        ExportOptions{.others = {options.jsonFile, options.reportFile, options.depfile},
                                      .externalTextures = options.externalTextures,
                                      .gpuInstancing = options.gpuInstancing});
    }));
    Show(Notes(written->GetNotes()), progress, report);
    verification.AddFileSize(written->File());
    if (!verification.ReadsOutput())
        verification.MeasureOutput(model);
    if (options.reportFile.empty())
        Free(model);
    if (verification.ReadsOutput())
        report.steps.push_back(RunStep("Verify", progress, [&] { verification.CheckFile(written->File(), progress); }));
    report.after.SetViewer(verification.After());
    report.verdict = verification.Result();
    report.budget = CheckBudget(options.budget, SizeOf(report.after));
    NoteGrowth(report, progress);
    std::string refusal = RefusalOf(options, report);
    if (refusal.empty() && !options.dryRun)
        written->MoveIntoPlace();
    return refusal;
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
    Verification verification(options);
    Process(options, inputs, context.state, progress, report, verification, views);
    report.refusal = Export(options, inputs.model, context.state, progress, report, verification);

    if (!options.reportFile.empty())
        views.after =
            ViewAfter(options, inputs.model, report.refusal.empty() && !options.dryRun, context.state, progress);
    WriteReports(options, report, views, context.state);
    progress.Clear();
    context.out << (IsStdout(options.jsonFile) ? ReportJson(report) : ReportText(report));
    PrintProblems(inputs.skipped, progress, context.errors);
    if (!report.refusal.empty())
        throw ToolError(fmt::format("cannot write {}: {}", options.output.string(), report.refusal));
    if (!options.depfile.empty())
        WriteWhole(options.depfile, context.state,
                   [&](std::ostream& file) { file << DepfileText(options.output, ReferencedFiles(options, inputs)); });
    if (!report.skipped.empty())
        return kUnusable;
    return IsExceeded(report.budget) ? kOverBudget : kDone;
}

}  // namespace Sceneprep
