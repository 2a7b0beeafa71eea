#include <sceneprep/report/Proof.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using testing::ElementsAre;
using testing::IsEmpty;

const WorldMeasure kWorld = {
    .triangles = 12, .min = {0, 0, 0}, .max = {3, 4, 12}, .area = 200, .volume = 100};  // diagonal 13

TEST(Proof, OneWorldIsTheSame) { EXPECT_THAT(FindDifferences(kWorld, kWorld, false), IsEmpty()); }

TEST(Proof, SmallDifferencesAreTolerated)
{
    WorldMeasure after = kWorld;
    after.max[2] += 0.0012;
    after.area += 0.019;
    after.volume += 0.25;
    EXPECT_THAT(FindDifferences(kWorld, after, false), IsEmpty());
}

TEST(Proof, LargerOnesAreTold)
{
    WorldMeasure after = kWorld;
    after.triangles = 11;
    after.min[1] = -0.0014;
    after.area = 200.5;
    after.volume = -100;
    EXPECT_THAT(FindDifferences(kWorld, after, false),
                ElementsAre("11 triangles, 12 expected", "bounds moved by 0.0014", "area 200.5, 200 expected",
                            "signed volume -100, 100 expected"));
}

TEST(Proof, WhereFacesMayTurnTheVolumeIsNotCompared)
{
    WorldMeasure after = kWorld;
    after.volume = -100;
    EXPECT_THAT(FindDifferences(kWorld, after, true), IsEmpty());
}

TEST(Proof, WhatIsNoNumberIsADifference)
{
    WorldMeasure after = kWorld;
    after.area = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(FindDifferences(kWorld, after, false), ElementsAre("area nan, 200 expected"));
}

TEST(Proof, EmptyWorldsAreTheSame) { EXPECT_THAT(FindDifferences({}, {}, false), IsEmpty()); }

}  // namespace
