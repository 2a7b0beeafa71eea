#include <sceneprep/batch/BatchIndex.h>

#include <fmt/format.h>
#include <sceneprep/report/Budget.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

namespace Sceneprep::Batch
{

namespace
{

constexpr int kIndexSchema = 1;

std::string ReadAll(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string LastLine(const std::string& text)
{
    const std::size_t end = text.find_last_not_of("\r\n");
    if (end == std::string::npos)
        return {};
    const std::size_t lineBreak = text.find_last_of("\r\n", end);
    const std::size_t begin = lineBreak == std::string::npos ? 0 : lineBreak + 1;
    return text.substr(begin, end + 1 - begin);
}

int ReadStatus(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    int status = 0;
    return stream >> status ? status : ModelResult::kNotRun;
}

const char* StatusText(int status)
{
    switch (status)
    {
        case kDone:
            return "done";
        case kOverBudget:
            return "over budget";
        case ModelResult::kNotRun:
            return "not run";
        default:
            return "failed";
    }
}

/// Returns the draw calls before or after; none if the report does not have them.
std::optional<std::uint64_t> DrawCallsOf(const ModelResult& result, const char* when)
{
    const Json::json_pointer path = Json::json_pointer() / when / "drawCalls";
    if (!result.report.contains(path) || !result.report[path].is_number_unsigned())
        return std::nullopt;
    return result.report[path].get<std::uint64_t>();
}

double SecondsOf(const ModelResult& result)
{
    double milliseconds = 0;
    if (result.report.contains("steps"))
    {
        for (const Json& step : result.report["steps"])
            milliseconds += step.value("milliseconds", 0.0);
    }
    return milliseconds / 1000;
}

std::string Row(const ModelResult& result, std::size_t nameWidth)
{
    const auto drawCalls = [&](const char* when) {
        const std::optional<std::uint64_t> count = DrawCallsOf(result, when);
        return count ? std::to_string(*count) : "";
    };
    const std::string change = DrawCallsOf(result, "after") ? drawCalls("before") + " -> " + drawCalls("after") : "";
    return fmt::format("{:<{}}  {:<11}{:>18}{:>14}{:>10}\n", OneLine(result.model), nameWidth,
                       StatusText(result.exitStatus), change, result.bytes > 0 ? std::to_string(result.bytes) : "",
                       result.report.contains("steps") ? fmt::format("{:.2f}", SecondsOf(result)) : "");
}

}  // namespace

ModelResult ReadResult(const Edge& edge, const ModelFile& file)
{
    ModelResult result{
        .model = file.input.string(), .output = file.output.string(), .exitStatus = ReadStatus(edge.status)};
    result.problem = LastLine(ReadAll(edge.log));
    if (result.exitStatus == kDone || result.exitStatus == kOverBudget)
    {
        Json report = Json::parse(ReadAll(edge.report), nullptr, false);
        if (report.is_object())
            result.report = std::move(report);
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(edge.output, error);
        result.bytes = error ? 0 : size;
    }
    return result;
}

std::string ResultTable(const std::vector<ModelResult>& results)
{
    std::size_t nameWidth = 5;
    for (const ModelResult& result : results)
        nameWidth = std::max(nameWidth, OneLine(result.model).size());
    std::string table = fmt::format("{:<{}}  {:<11}{:>18}{:>14}{:>10}\n", "model", nameWidth, "status", "draw calls",
                                    "bytes", "seconds");
    for (const ModelResult& result : results)
        table += Row(result, nameWidth);
    std::size_t done = 0;
    for (const ModelResult& result : results)
    {
        done += result.exitStatus == kDone ? 1 : 0;
        if (result.exitStatus != kDone && !result.problem.empty())
            table += result.problem + '\n';
    }
    return table + fmt::format("{} of {} models prepared\n", done, results.size());
}

Json IndexAsJson(const std::vector<ModelResult>& results)
{
    Json models = Json::array();
    for (const ModelResult& result : results)
    {
        Json model = {
            {"model", result.model},           {"output", result.output},   {"status", StatusText(result.exitStatus)},
            {"exitStatus", result.exitStatus}, {"problem", result.problem}, {"bytes", result.bytes},
            {"seconds", SecondsOf(result)},    {"report", result.report}};
        models.push_back(std::move(model));
    }
    const auto failed = std::count_if(results.begin(), results.end(),
                                      [](const ModelResult& result) { return result.exitStatus != kDone; });
    return {{"schema", kIndexSchema}, {"failed", failed}, {"models", models}};
}

bool AreAllDone(const std::vector<ModelResult>& results)
{
    return std::all_of(results.begin(), results.end(),
                       [](const ModelResult& result) { return result.exitStatus == kDone; });
}

}  // namespace Sceneprep::Batch
