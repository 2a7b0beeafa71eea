#include <sceneprep/report/JsonFigures.h>

namespace Sceneprep
{

using Pipeline::SceneStats;
using Pipeline::WorldMeasure;

Json CountsAsJson(const SceneStats& stats)
{
    Json counts = Json::object();
    for (const auto& [name, count] : stats.Rows())
        counts[name] = count;
    return counts;
}

Json WorldAsJson(const WorldMeasure& world)
{
    return {{"triangles", world.triangles},
            {"degenerate", world.degenerate},
            {"broken", world.broken},
            {"min", world.min},
            {"max", world.max},
            {"area", world.area},
            {"volume", world.volume}};
}

std::string JsonText(const Json& document)
{
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace Sceneprep
