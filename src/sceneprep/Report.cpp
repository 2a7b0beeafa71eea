#include <sceneprep/Report.h>

#include <fmt/format.h>
#include <sceneprep/Formats.h>
#include <nlohmann/json.hpp>

namespace Sceneprep
{

namespace
{

using Json = nlohmann::ordered_json;

Json NodesAsJson(Importing::SceneContainer& scene)
{
    Json nodes = Json::array();
    for (Importing::Node& node : scene.NodeLibrary)
    {
        nodes.push_back({{"name", node.GetName()},
                         {"animation", node.GetAnimationID()},
                         {"children", node.ChildList},
                         {"surfaces", node.SurfaceList},
                         {"cameras", node.CameraList},
                         {"lights", node.LightList}});
    }
    return nodes;
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

std::string StatsTable(const SceneStats& stats)
{
    std::string table;
    for (const auto& [name, count] : stats.Rows())
        table += fmt::format("{:<12}{:>12}\n", name, count);
    return table;
}

std::string TimesTable(const std::vector<StepResult>& steps)
{
    std::string table;
    for (const StepResult& step : steps)
    {
        table += fmt::format("{:<24}{:>9.1f} ms\n", step.name, step.milliseconds);
        for (const MessageTotal& message : step.messages)
            table += fmt::format("  {} {} ms in {} pass{}\n", message.text, message.sum, message.count,
                                 message.count == 1 ? "" : "es");
    }
    return table;
}

std::string InspectionJson(const std::filesystem::path& file, const SceneStats& stats, Importing::SceneContainer& scene,
                           bool withTree)
{
    Json inspection = {{"file", file.string()}, {"counts", Json::object()}};
    for (const auto& [name, count] : stats.Rows())
        inspection["counts"][name] = count;
    if (withTree)
    {
        inspection["root"] = scene.GetRootNodeIndex();
        inspection["nodes"] = NodesAsJson(scene);
    }
    // Names come from files and need not be UTF-8.
    return inspection.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string FormatsText()
{
    std::string text = "Written, by the ending of the output:\n";
    for (const WriteFormat& format : ListWriteFormats())
        text += fmt::format("  .{:<10}{}\n", format.extension, format.description);

    text += "Read:\n ";
    std::size_t column = 1;
    for (const std::string& extension : ListReadExtensions())
    {
        if (column + extension.size() + 2 > 80)
        {
            text += "\n ";
            column = 1;
        }
        text += " ." + extension;
        column += extension.size() + 2;
    }
    return text + '\n';
}

}  // namespace Sceneprep
