#include <sceneprep/report/Report.h>

#include <fmt/format.h>

namespace Sceneprep
{

using Pipeline::Change;
using Pipeline::MessageTotal;
using Pipeline::SceneStats;
using Pipeline::StepResult;
using Pipeline::WorldMeasure;

namespace
{

std::string FigureRow(const char* name, const std::vector<WorldMeasure>& worlds, double (*figure)(const WorldMeasure&))
{
    std::string row = fmt::format("{:<12}", name);
    for (const WorldMeasure& world : worlds)
        row += fmt::format("{:>12.6g}", figure(world));
    return row + '\n';
}

}  // namespace

std::string ComparisonTable(const SceneStats& before, const SceneStats& after)
{
    std::string table = fmt::format("{:<12}{:>12}{:>12}\n", "", "before", "after");
    const auto rowsBefore = before.Rows();
    const auto rowsAfter = after.Rows();
    for (std::size_t i = 0; i < rowsBefore.size(); ++i)
        table += fmt::format("{:<12}{:>12}{:>12}\n", rowsBefore[i].first, rowsBefore[i].second, rowsAfter[i].second);
    return table;
}

std::string CostTable(const ViewerCounts& before, const ViewerCounts& after)
{
    const auto row = [](const char* name, std::uintmax_t first, std::uintmax_t second) {
        return fmt::format("{:<12}{:>12}{:>12}\n", name, first, second);
    };
    return row("draw calls", before.drawCalls, after.drawCalls) + row("file bytes", before.fileBytes, after.fileBytes) +
           row("GPU bytes", before.gpuBytes, after.gpuBytes);
}

std::string StatsTable(const SceneStats& stats)
{
    std::string table;
    for (const auto& [name, count] : stats.Rows())
        table += fmt::format("{:<12}{:>12}\n", name, count);
    return table;
}

std::string WorldTable(const std::vector<WorldMeasure>& worlds)
{
    using World = const WorldMeasure&;
    std::string shown = fmt::format("{:<12}", "shown");
    for (World world : worlds)
        shown += fmt::format("{:>12}", world.triangles);
    return shown + '\n' + FigureRow("min x", worlds, [](World world) { return world.min[0]; }) +
           FigureRow("min y", worlds, [](World world) { return world.min[1]; }) +
           FigureRow("min z", worlds, [](World world) { return world.min[2]; }) +
           FigureRow("max x", worlds, [](World world) { return world.max[0]; }) +
           FigureRow("max y", worlds, [](World world) { return world.max[1]; }) +
           FigureRow("max z", worlds, [](World world) { return world.max[2]; }) +
           FigureRow("area", worlds, [](World world) { return world.area; }) +
           FigureRow("volume", worlds, [](World world) { return world.volume; });
}

std::string TimesTable(const std::vector<StepResult>& steps)
{
    std::string table;
    for (const StepResult& step : steps)
    {
        table += fmt::format("{:<24}{:>9.1f} ms\n", step.name, step.milliseconds);
        for (const Change& change : step.changes)
            table += fmt::format("  {} {}\n", change.count, change.what);
        for (const MessageTotal& message : step.messages)
            table += fmt::format("  {} {} ms in {} pass{}\n", message.text, message.sum, message.count,
                                 message.count == 1 ? "" : "es");
    }
    return table;
}

}  // namespace Sceneprep
