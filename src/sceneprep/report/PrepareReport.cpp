#include <sceneprep/report/PrepareReport.h>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sceneprep/report/JsonFigures.h>
#include <sceneprep/report/ReasonsReport.h>
#include <sceneprep/report/Report.h>
#include <sceneprep/run/Error.h>

namespace Sceneprep
{

using Pipeline::Change;
using Pipeline::CountScene;
using Pipeline::Measure;
using Pipeline::MessageTotal;
using Pipeline::PartListener;
using Pipeline::StepResult;

namespace
{

constexpr int kSchema = 1;
constexpr std::size_t kFindingsInText = 5;

std::vector<std::string> TextsOf(const std::vector<std::filesystem::path>& paths)
{
    std::vector<std::string> texts;
    texts.reserve(paths.size());
    for (const std::filesystem::path& path : paths)
        texts.push_back(path.string());
    return texts;
}

Json StepAsJson(const StepResult& step)
{
    Json changes = Json::object();
    for (const Change& change : step.changes)
        changes[change.what] = change.count;
    Json messages = Json::array();
    for (const MessageTotal& message : step.messages)
        messages.push_back({{"text", message.text}, {"count", message.count}, {"sum", message.sum}});
    return {{"name", step.name}, {"milliseconds", step.milliseconds}, {"changes", changes}, {"messages", messages}};
}

std::vector<std::string> TextsOf(const Notes& notes)
{
    std::vector<std::string> texts;
    for (const Note& note : notes.All())
        texts.push_back(note.text);
    return texts;
}

Json LossesAsJson(const Notes& notes)
{
    Json losses = Json::array();
    for (const Note& note : notes.All())
    {
        if (!note.loss.empty())
            losses.push_back({{"name", note.loss}, {"text", note.text}});
    }
    return losses;
}

std::string LossesText(const Notes& notes)
{
    std::string text;
    for (const Note& note : notes.All())
    {
        if (!note.loss.empty())
            text += "  " + OneLine(note.loss + ": " + note.text) + '\n';
    }
    return text.empty() ? text : "Lost:\n" + text;
}

}  // namespace

void SceneFigures::SetViewer(const ViewerCounts& file)
{
    viewer = file;
    counts.nodes = file.nodes;
    counts.materials = file.materials;
}

Json FiguresAsJson(const SceneFigures& figures)
{
    return {{"counts", CountsAsJson(figures.counts)}, {"world", WorldAsJson(figures.world)},
            {"fileBytes", figures.viewer.fileBytes},  {"gpuBytes", figures.viewer.gpuBytes},
            {"drawCalls", figures.viewer.drawCalls},  {"viewerMaterials", figures.viewer.materials}};
}

Json VerdictAsJson(const Verdict& verdict)
{
    Json differences = Json::array();
    for (const Difference& difference : verdict.differences)
        differences.push_back({{"kind", difference.kind}, {"name", difference.name}, {"text", difference.text}});
    return {{"verified", verdict.isVerified},
            {"reason", verdict.reason},
            {"compared", verdict.compared},
            {"differences", differences}};
}

std::string VerdictText(const Verdict& verdict, const std::string& subject, const std::string& object)
{
    std::string text = fmt::format("{} {} {}{}\n", subject, verdict.differences.empty() ? "matches" : "differs from",
                                   object, verdict.differences.empty() ? "." : ":");
    for (const Difference& difference : verdict.differences)
        text += "  " + OneLine(difference.text) + '\n';
    if (!verdict.reason.empty())
        text += fmt::format("The written file was not compared: {}.\n", verdict.reason);
    if (!verdict.compared.empty())
        text += fmt::format("Compared: {}.\n", fmt::join(verdict.compared, "; "));
    return text;
}

std::vector<std::string> TextsOf(const std::vector<Difference>& differences)
{
    std::vector<std::string> texts;
    texts.reserve(differences.size());
    for (const Difference& difference : differences)
        texts.push_back(difference.text);
    return texts;
}

ModelSize SizeOf(const SceneFigures& figures)
{
    return {.draws = figures.viewer.drawCalls,
            .triangles = figures.world.triangles,
            .vertices = figures.counts.vertices,
            .nodes = figures.viewer.nodes,
            .materials = figures.viewer.materials,
            .textures = figures.counts.textures,
            .bytes = figures.viewer.fileBytes};
}

SceneFigures FiguresOf(Importing::SceneContainer& scene, const PartListener& listener)
{
    return {CountScene(scene), Measure(scene, listener), {}};
}

std::string ReportText(const PrepareReport& report)
{
    return ComparisonTable(report.before.counts, report.after.counts) +
           CostTable(report.before.viewer, report.after.viewer) +
           WorldTable({report.before.world, report.after.world}) + VerdictText(report.verdict) +
           LossesText(report.notes) + BudgetTable(report.budget) + ReasonsText(report.reasons) +
           FindingsText(report.findings, kFindingsInText) + '\n' + TimesTable(report.steps);
}

std::string ReportJson(const PrepareReport& report)
{
    Json json = {{"schema", kSchema},
                 {"inputs", TextsOf(report.inputs)},
                 {"leftOut", TextsOf(report.skipped)},
                 {"output", report.output.string()},
                 {"before", FiguresAsJson(report.before)},
                 {"after", FiguresAsJson(report.after)},
                 {"steps", Json::array()},
                 {"notes", TextsOf(report.notes)},
                 {"losses", LossesAsJson(report.notes)},
                 {"reasons", ReasonsAsJson(report.reasons)},
                 {"findings", FindingsAsJson(report.findings)},
                 {"verdict", VerdictAsJson(report.verdict)},
                 {"differences", TextsOf(report.verdict.differences)},
                 {"refusal", report.refusal}};
    if (!report.budget.empty())
        json["budget"] = BudgetAsJson(report.budget);
    for (const StepResult& step : report.steps)
        json["steps"].push_back(StepAsJson(step));
    return JsonText(json);
}

}  // namespace Sceneprep
