#pragma once

#include <importing/plugin/SceneContainer.h>

#include <cstddef>

namespace SceneprepTests
{

/// What stays the same however a scene's hierarchy is cut. Every listing of a surface counts.
struct WorldMeasure
{
    std::size_t triangles = 0;
    double min[3] = {1e300, 1e300, 1e300};
    double max[3] = {-1e300, -1e300, -1e300};
    double area = 0;
    /// Signed volume of the cones from the origin to the triangles, as a viewer sees them that turns the winding where
    /// a matrix mirrors. It changes its sign where faces come to look the other way.
    double volume = 0;

    /// The length of the box's diagonal, or the largest coordinate where that is more.
    double Extent() const;
};

/// Measures by CalculateGlobalTM(), in double precision behind the matrix.
WorldMeasure Measure(Importing::SceneContainer& scene);

/// Expects equal triangle counts; boxes that agree to 1e-5 of the extent; areas that agree to 1e-4 of the area;
/// volumes that agree to 1e-4 of area times extent.
void ExpectSameWorld(const WorldMeasure& actual, const WorldMeasure& expected);

}  // namespace SceneprepTests
