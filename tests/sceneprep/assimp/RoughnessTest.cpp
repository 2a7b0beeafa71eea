#include <sceneprep/assimp/Roughness.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using namespace Sceneprep;

TEST(Roughness, APowerOfZeroOrLessIsARoughnessOfOne)
{
    EXPECT_EQ(RoughnessOf(0), 1);
    EXPECT_EQ(PowerOf(1), 0);
}

TEST(Roughness, APowerOfThirtyIsARoughnessOfOneHalf)
{
    EXPECT_FLOAT_EQ(RoughnessOf(30), 0.5F);
    EXPECT_FLOAT_EQ(PowerOf(0.5F), 30);
}

TEST(Roughness, RoundTrips)
{
    for (const float roughness : {0.05F, 0.1F, 0.37F, 0.9F, 1.0F})
        EXPECT_NEAR(RoughnessOf(PowerOf(roughness)), roughness, 1e-6F);
}

TEST(Roughness, ClampsValuesOutsideTheRange)
{
    EXPECT_EQ(RoughnessOf(-5), 1);
    EXPECT_EQ(RoughnessOf(std::numeric_limits<float>::quiet_NaN()), 1);
    EXPECT_EQ(RoughnessOf(std::numeric_limits<float>::infinity()), 0);
    EXPECT_EQ(PowerOf(0), 1e6F);
    EXPECT_EQ(PowerOf(-1), 1e6F);
    EXPECT_EQ(PowerOf(2), 0);
}

}  // namespace
