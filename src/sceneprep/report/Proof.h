#pragma once

#include <pipeline/scene/WorldMeasure.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// Tolerances of the comparison of two measures.
inline constexpr double kAreaTolerance = 1e-4;    ///< of the area
inline constexpr double kBoundsTolerance = 1e-4;  ///< of the diagonal
inline constexpr double kVolumeTolerance = 1e-4;  ///< of the area times the extent

/// Compares the measures of a scene before and after the steps.
/// @param facesMayTurn  whether a chosen step flips faces; the volume is then not compared
/// @return the differences beyond the tolerances, one line each; empty if the result matches the input
std::vector<std::string> FindDifferences(const Pipeline::WorldMeasure& before, const Pipeline::WorldMeasure& after,
                                         bool facesMayTurn);

}  // namespace Sceneprep
