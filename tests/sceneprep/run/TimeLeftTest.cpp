#include <sceneprep/run/TimeLeft.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

using namespace std::chrono_literals;
using Sceneprep::TimeLeft;

constexpr TimeLeft::Clock::time_point kStart{1000s};

/// A step that has reported its part once.
TimeLeft Begun()
{
    TimeLeft timeLeft;
    timeLeft.Begin(kStart);
    timeLeft.Estimate(0.01, kStart);
    return timeLeft;
}

TEST(TimeLeft, AssumesThatTheSpeedStaysTheSame)
{
    EXPECT_EQ(Begun().Estimate(0.25, kStart + 2s), 6s);
    EXPECT_EQ(Begun().Estimate(0.9, kStart + 9s), 1s);
}

TEST(TimeLeft, IsRoundedUp) { EXPECT_EQ(Begun().Estimate(0.4, kStart + 1s), 2s); }

TEST(TimeLeft, IsUnknownForMeaninglessParts)
{
    EXPECT_EQ(TimeLeft().Estimate(0.5, kStart), std::nullopt);
    EXPECT_EQ(Begun().Estimate(0.5, kStart + 999ms), std::nullopt);
    EXPECT_EQ(Begun().Estimate(0.009, kStart + 5s), std::nullopt);
    EXPECT_EQ(Begun().Estimate(1, kStart + 5s), std::nullopt);
    EXPECT_EQ(Begun().Estimate(std::numeric_limits<double>::quiet_NaN(), kStart + 5s), std::nullopt);
}

TEST(TimeLeft, IsUnknownDuringTheFirstSecondOfProgress)
{
    TimeLeft timeLeft;
    timeLeft.Begin(kStart);
    EXPECT_EQ(timeLeft.Estimate(0.001, kStart), std::nullopt);
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 8s), std::nullopt);
    EXPECT_EQ(timeLeft.Estimate(0.8, kStart + 8s + 900ms), std::nullopt);
    EXPECT_EQ(timeLeft.Estimate(0.9, kStart + 9s), 1s);
}

TEST(TimeLeft, CountsDownByTheClockBetweenEstimates)
{
    TimeLeft timeLeft = Begun();
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 10s), 10s);
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 10s + 500ms), 10s);
    EXPECT_EQ(timeLeft.Estimate(0.9, kStart + 10s + 999ms), 10s);
}

TEST(TimeLeft, ALaterEstimateMovesTheEndAQuarterOfTheWay)
{
    TimeLeft timeLeft = Begun();
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 10s), 10s);
    // At half the speed 22 s would be left; 9 s were expected: 3.25 s more.
    EXPECT_EQ(timeLeft.Estimate(1.0 / 3, kStart + 11s), 13s);
}

TEST(TimeLeft, StartsAgainAfterTheExpectedEnd)
{
    TimeLeft timeLeft = Begun();
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 10s), 10s);
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 30s), 30s);
}

TEST(TimeLeft, ForgetsTheStepBefore)
{
    TimeLeft timeLeft = Begun();
    timeLeft.Estimate(0.5, kStart + 100s);
    timeLeft.Begin(kStart + 100s);
    EXPECT_EQ(timeLeft.Estimate(0.01, kStart + 100s), std::nullopt);
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 100s + 500ms), std::nullopt);
    EXPECT_EQ(timeLeft.Estimate(0.5, kStart + 102s), 2s);
}

}  // namespace
