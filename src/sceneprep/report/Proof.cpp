#include <sceneprep/report/Proof.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace Sceneprep
{

using Pipeline::WorldMeasure;

namespace
{

double FarthestBound(const WorldMeasure& before, const WorldMeasure& after)
{
    double farthest = 0;
    for (unsigned axis = 0; axis < 3; ++axis)
        farthest = std::max(
            {farthest, std::fabs(after.min[axis] - before.min[axis]), std::fabs(after.max[axis] - before.max[axis])});
    return farthest;
}

}  // namespace

std::vector<std::string> FindDifferences(const WorldMeasure& before, const WorldMeasure& after, bool facesMayTurn)
{
    std::vector<std::string> differences;
    if (after.triangles != before.triangles)
        differences.push_back(fmt::format("{} triangles, {} expected", after.triangles, before.triangles));
    const double moved = FarthestBound(before, after);
    if (!(moved <= kBoundsTolerance * before.Diagonal()))
        differences.push_back(fmt::format("bounds moved by {:.6g}", moved));
    if (!(std::fabs(after.area - before.area) <= kAreaTolerance * before.area))
        differences.push_back(fmt::format("area {:.6g}, {:.6g} expected", after.area, before.area));
    const double volumeTolerance = kVolumeTolerance * before.area * before.Extent();
    if (!facesMayTurn && !(std::fabs(after.volume - before.volume) <= volumeTolerance))
        differences.push_back(fmt::format("signed volume {:.6g}, {:.6g} expected", after.volume, before.volume));
    return differences;
}

}  // namespace Sceneprep
