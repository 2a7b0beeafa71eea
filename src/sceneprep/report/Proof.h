#pragma once

#include <pipeline/scene/WorldMeasure.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// How far two measures of one world may lie apart.
inline constexpr double kAreaTolerance = 1e-4;    ///< of the area
inline constexpr double kBoundsTolerance = 1e-4;  ///< of the diagonal
inline constexpr double kVolumeTolerance = 1e-4;  ///< of the area times the extent

/// Compares a world before and after preparing.
/// @param facesMayTurn  whether a step was asked for that turns faces; the volume is not compared then
/// @return what differs by more than the tolerances, one line each; nothing where the world is the same.
std::vector<std::string> FindDifferences(const Pipeline::WorldMeasure& before, const Pipeline::WorldMeasure& after,
                                         bool facesMayTurn);

}  // namespace Sceneprep
