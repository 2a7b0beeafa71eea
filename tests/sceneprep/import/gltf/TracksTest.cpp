#include <sceneprep/import/gltf/Tracks.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;

CarriedAccessor Floats(const std::vector<float>& numbers, const std::string& type, std::size_t components)
{
    CarriedAccessor accessor{.componentType = 5126, .type = type, .count = numbers.size() / components};
    accessor.bytes.resize(numbers.size() * sizeof(float));
    std::memcpy(accessor.bytes.data(), numbers.data(), accessor.bytes.size());
    return accessor;
}

Track MakeTrack(const std::vector<float>& times, const std::vector<float>& values, const std::string& interpolation,
                bool isRotation = false)
{
    const std::vector<CarriedAccessor> accessors = {Floats(times, "SCALAR", 1),
                                                    isRotation ? Floats(values, "VEC4", 4) : Floats(values, "VEC3", 3)};
    return {{.input = 0, .output = 1, .interpolation = interpolation}, accessors, isRotation};
}

TEST(Tracks, InterpolateLinearly)
{
    const Track track = MakeTrack({1, 3}, {0, 0, 0, 4, 8, 0}, "LINEAR");
    EXPECT_EQ(track.ValueAt(0)[0], 0);
    EXPECT_EQ(track.ValueAt(1.5)[0], 1);
    EXPECT_EQ(track.ValueAt(1.5)[1], 2);
    EXPECT_EQ(track.ValueAt(3)[1], 8);
    EXPECT_EQ(track.ValueAt(9)[1], 8);
}

TEST(Tracks, StepAtKeys)
{
    const Track track = MakeTrack({1, 3}, {0, 0, 0, 4, 8, 0}, "STEP");
    EXPECT_EQ(track.ValueAt(2.9)[0], 0);
    EXPECT_EQ(track.ValueAt(3)[0], 4);
}

TEST(Tracks, FollowSplines)
{
    // In-tangent, value and out-tangent of each key: the parabola t * t from 0 to 2.
    const Track track = MakeTrack({0, 2}, {0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 0, 0, 4, 0, 0, 0, 0, 0}, "CUBICSPLINE");
    EXPECT_NEAR(track.ValueAt(0.5)[0], 0.25, 1e-12);
    EXPECT_NEAR(track.ValueAt(1.5)[0], 2.25, 1e-12);
    EXPECT_EQ(track.ValueAt(2)[0], 4);
}

TEST(Tracks, RotateTheShorterWay)
{
    const float half = std::sqrt(0.5F);
    const Track track = MakeTrack({0, 1}, {0, 0, 0, 1, 0, 0, -half, -half}, "LINEAR", true);
    const std::array<double, 4> value = track.ValueAt(0.5);
    EXPECT_NEAR(value[2], std::sin(std::acos(-1) / 8), 1e-6);
    EXPECT_NEAR(value[3], std::cos(std::acos(-1) / 8), 1e-6);
}

}  // namespace
