#include <sceneprep/report/PrepareReport.h>

#include <sceneprep/report/JsonFigures.h>
#include <sceneprep/report/ReasonsReport.h>
#include <sceneprep/report/Report.h>

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

Json FiguresAsJson(const SceneFigures& figures)
{
    return {{"counts", CountsAsJson(figures.counts)}, {"world", WorldAsJson(figures.world)}};
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

std::string Verdict(const std::vector<std::string>& differences)
{
    if (differences.empty())
        return "The result matches the input.\n";
    std::string text = "The result differs from the input:\n";
    for (const std::string& difference : differences)
        text += "  " + difference + '\n';
    return text;
}

std::string LossesText(const Notes& notes)
{
    std::string text;
    for (const Note& note : notes.All())
    {
        if (!note.loss.empty())
            text += "  " + note.loss + ": " + note.text + '\n';
    }
    return text.empty() ? text : "Lost:\n" + text;
}

}  // namespace

SceneFigures FiguresOf(Importing::SceneContainer& scene, const PartListener& listener)
{
    return {CountScene(scene), Measure(scene, listener)};
}

std::string ReportText(const PrepareReport& report)
{
    return ComparisonTable(report.before.counts, report.after.counts) +
           WorldTable({report.before.world, report.after.world}) + Verdict(report.differences) +
           LossesText(report.notes) + ReasonsText(report.reasons) + FindingsText(report.findings, kFindingsInText) +
           '\n' + TimesTable(report.steps);
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
                 {"differences", report.differences},
                 {"refusal", report.refusal}};
    for (const StepResult& step : report.steps)
        json["steps"].push_back(StepAsJson(step));
    return JsonText(json);
}

}  // namespace Sceneprep
