#pragma once

#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <pipeline/steps/RunStep.h>
#include <sceneprep/compare/ViewerCounts.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// Returns the counts before and after, one a line.
std::string ComparisonTable(const Pipeline::SceneStats& before, const Pipeline::SceneStats& after);

/// Returns the draw calls and sizes before and after, one a line.
std::string CostTable(const ViewerCounts& before, const ViewerCounts& after);

/// Returns the counts, one a line.
std::string StatsTable(const Pipeline::SceneStats& stats);

/// Returns the measures, one figure a line and one measure a column: triangles shown, bounds, area, volume.
std::string WorldTable(const std::vector<Pipeline::WorldMeasure>& worlds);

/// Returns the time of each step, one a line; below each step what it changed and the messages of the plug-in.
std::string TimesTable(const std::vector<Pipeline::StepResult>& steps);

}  // namespace Sceneprep
