#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/Pipeline.h>
#include <sceneprep/SceneStats.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// @return the counts before and after, one a line.
std::string ComparisonTable(const SceneStats& before, const SceneStats& after);

/// @return the counts, one a line.
std::string StatsTable(const SceneStats& stats);

/// @return the time of each step, one a line; below a step what the plug-in said meanwhile.
std::string TimesTable(const std::vector<StepResult>& steps);

/// @return an object with the keys "file" and "counts", and with the tree "root" and "nodes": the nodes as a flat list
///         in the order of the library, their references being indices into it.
std::string InspectionJson(const std::filesystem::path& file, const SceneStats& stats, Importing::SceneContainer& scene,
                           bool withTree);

/// @return what can be read and written.
std::string FormatsText();

}  // namespace Sceneprep
