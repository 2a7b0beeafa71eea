#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/PartCounter.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace Pipeline
{

/// What a scene looks like as numbers, which stay the same however its hierarchy is cut. Every listing of a surface
/// below the root counts.
struct WorldMeasure
{
    std::size_t triangles = 0;
    std::size_t degenerate = 0;  ///< of them without area
    std::size_t broken = 0;      ///< of them with a corner that is infinite or no number; what follows is without them
    std::array<double, 3> min = {};
    std::array<double, 3> max = {};  ///< of a world without triangles 0, as the minimum
    double area = 0;
    /// Signed volume of the cones from the origin to the triangles, as a viewer sees them that turns the winding where
    /// a matrix mirrors. It changes where faces come to look the other way.
    double volume = 0;

    double Diagonal() const;
    /// The diagonal, or the largest coordinate where that is more.
    double Extent() const;
};

/// Measures in double precision behind the world matrices.
WorldMeasure Measure(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

/// @return what looks wrong with the triangles, one line each.
std::vector<std::string> NotesOnTriangles(const WorldMeasure& world);

}  // namespace Pipeline
