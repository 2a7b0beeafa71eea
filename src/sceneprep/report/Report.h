#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <pipeline/steps/RunStep.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// @return the counts before and after, one a line.
std::string ComparisonTable(const Pipeline::SceneStats& before, const Pipeline::SceneStats& after);

/// @return the counts, one a line.
std::string StatsTable(const Pipeline::SceneStats& stats);

/// @return what the worlds look like, one figure a line, one world a column: triangles shown, bounds, area, volume.
std::string WorldTable(const std::vector<Pipeline::WorldMeasure>& worlds);

/// @return the time of each step, one a line; below a step what it changed and what the plug-in said meanwhile.
std::string TimesTable(const std::vector<Pipeline::StepResult>& steps);

/// @param world  what the scene looks like
/// @return an object with the keys "file", "counts", "world" and "surfaces", and with the tree "root" and "nodes":
///         surfaces and nodes as flat lists in the order of their libraries, their references being indices.
std::string InspectionJson(const std::filesystem::path& file, Importing::SceneContainer& scene,
                           const Pipeline::WorldMeasure& world, bool withTree);

/// @return what can be read and written.
std::string FormatsText();

}  // namespace Sceneprep
