#pragma once

#include <importing/math/Box.h>
#include <importing/plugin/SceneContainer.h>

#include <cstdint>
#include <vector>

/// The arrangement of boxes of edge length 1.
enum class Spread
{
    Sparse,   ///< on a cubic grid, a gap between neighbours
    Clusters  ///< ten overlapping ones on every place of the grid
};

/// The boxes as the scene below has them, in the order in which its nodes list them.
std::vector<Importing::Box> SpreadBoxes(Spread spread, std::int64_t count);

/// A root and below it one node for each of these boxes, which moves a mesh of its own into place.
void FillSpreadScene(Importing::SceneContainer& scene, Spread spread, std::int64_t count);
