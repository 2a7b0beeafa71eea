#pragma once

#include <pipeline/scene/Hierarchy.h>

#include <cstdint>
#include <vector>

namespace Pipeline
{

/// Returns for each surface [surfaces] the number of its cell of a grid of cubes: the cube that holds the centre of the
/// bounds of its mesh, in the world. Cells are numbered from 0 in the order of the walk; surfaces whose centre is not
/// finite share one. A surface that several nodes reference has the cell of the first reference; -1 for a surface that
/// no node references. Takes linear time in vertices and n log n in surfaces.
/// @param size  length of the edges of the cubes, above 0
std::vector<int> FindCells(Importing::SceneContainer& scene, const NodeWalk& walk, double size);

/// Splits a list of surfaces into those of one cell each, in the order in which the cells occur.
/// @param cellOf  [surfaces] as FindCells() returns it; if it is empty, the list is not split
std::vector<std::vector<std::int32_t>> SplitByCell(const std::vector<std::int32_t>& surfaces,
                                                   const std::vector<int>& cellOf);

}  // namespace Pipeline
