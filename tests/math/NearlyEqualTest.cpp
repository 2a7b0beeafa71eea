#include <importing/math/NearlyEqual.h>

#include <math/FloatBits.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using Importing::NearlyEqual;
using Support::Bits;
using Support::FromBits;

TEST(NearlyEqual, EqualFloatsAreNearlyEqual)
{
    EXPECT_TRUE(NearlyEqual(1.0F, 1.0F));
    EXPECT_TRUE(NearlyEqual(0.0F, 0.0F));
}

TEST(NearlyEqual, TheLowestEightBitsDoNotMatter)
{
    const std::uint32_t one = Bits(1.0F);
    for (std::uint32_t low = 0; low < 256; ++low)
        EXPECT_TRUE(NearlyEqual(1.0F, FromBits(one | low))) << low;
}

TEST(NearlyEqual, EveryOtherBitMatters)
{
    const std::uint32_t one = Bits(1.0F);
    for (std::uint32_t bit = 8; bit < 32; ++bit)
        EXPECT_FALSE(NearlyEqual(1.0F, FromBits(one ^ (1U << bit)))) << "bit " << bit;
}

TEST(NearlyEqual, AdjacentFloatsAcrossAMaskBoundaryDiffer)
{
    const float below = FromBits(Bits(1.0F) - 1U);
    EXPECT_EQ(std::nextafter(1.0F, 0.0F), below);
    EXPECT_FALSE(NearlyEqual(1.0F, below));
}

TEST(NearlyEqual, ZerosOfDifferentSignDiffer) { EXPECT_FALSE(NearlyEqual(0.0F, -0.0F)); }

TEST(NearlyEqual, DenormalNumbersMayBeNearlyZero)
{
    EXPECT_TRUE(NearlyEqual(0.0F, std::numeric_limits<float>::denorm_min()));
}

TEST(NearlyEqual, NaNMayBeNearlyEqualToItself)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(NearlyEqual(nan, nan));
    EXPECT_FALSE(NearlyEqual(nan, 1.0F));
}

}  // namespace
