#pragma once

#include <gtest/gtest.h>
#include <pipeline/scene/WorldMeasure.h>

namespace SceneprepTests
{

using Pipeline::Measure;

/// Expects equal triangle counts; boxes that agree to 1e-5 of the extent; areas that agree to 1e-4 of the area;
/// volumes that agree to 1e-4 of area times extent.
inline void ExpectSameWorld(const Pipeline::WorldMeasure& actual, const Pipeline::WorldMeasure& expected)
{
    EXPECT_EQ(actual.triangles, expected.triangles);
    EXPECT_EQ(actual.broken, expected.broken);
    const double extent = expected.Extent();
    for (unsigned axis = 0; axis < 3; ++axis)
    {
        EXPECT_NEAR(actual.min[axis], expected.min[axis], 1e-5 * extent) << "axis " << axis;
        EXPECT_NEAR(actual.max[axis], expected.max[axis], 1e-5 * extent) << "axis " << axis;
    }
    EXPECT_NEAR(actual.area, expected.area, 1e-4 * expected.area);
    EXPECT_NEAR(actual.volume, expected.volume, 1e-4 * expected.area * extent);
}

}  // namespace SceneprepTests
