#include <importing/math/Products.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>

#include <gtest/gtest.h>

namespace
{

using Importing::Cross;
using Importing::Dot;

TEST(Products, CrossOfTheAxes)
{
    const D3DXVECTOR3 x(1, 0, 0);
    const D3DXVECTOR3 y(0, 1, 0);
    const D3DXVECTOR3 z(0, 0, 1);
    EXPECT_EQ(Cross(x, y), z);
    EXPECT_EQ(Cross(y, z), x);
    EXPECT_EQ(Cross(z, x), y);
    EXPECT_EQ(Cross(y, x), -z);
}

TEST(Products, CrossOfNumbers) { EXPECT_EQ(Cross(D3DXVECTOR3(1, 2, 3), D3DXVECTOR3(4, 5, 6)), D3DXVECTOR3(-3, 6, -3)); }

TEST(Products, DotOfNumbers) { EXPECT_EQ(Dot(D3DXVECTOR3(1, 2, 3), D3DXVECTOR3(4, 5, 6)), 32.0F); }

TEST(Products, DotIsSummedInTheOrderYXZ)
{
    // A 1 that is added to 2^30 is lost in rounding: only the order (y + x) + z gives 1, the others give 0.
    const D3DXVECTOR3 ones(1, 1, 1);
    EXPECT_EQ(Dot(D3DXVECTOR3(-0x1p+30F, 0x1p+30F, 1), ones), 1.0F);
    EXPECT_EQ(Dot(D3DXVECTOR3(1, 0x1p+30F, -0x1p+30F), ones), 0.0F);
    EXPECT_EQ(Dot(D3DXVECTOR3(0x1p+30F, 1, -0x1p+30F), ones), 0.0F);
}

TEST(Products, AgreeWithDoublePrecision)
{
    Support::RandomFloats random(1);
    for (int i = 0; i < 1000; ++i)
    {
        const D3DXVECTOR3 a = random.Vector(10);
        const D3DXVECTOR3 b = random.Vector(10);
        const auto product = [](float u, float v) { return static_cast<double>(u) * static_cast<double>(v); };
        const D3DXVECTOR3 cross = Cross(a, b);
        EXPECT_NEAR(cross.x, product(a.y, b.z) - product(a.z, b.y), 1e-4);
        EXPECT_NEAR(cross.y, product(a.z, b.x) - product(a.x, b.z), 1e-4);
        EXPECT_NEAR(cross.z, product(a.x, b.y) - product(a.y, b.x), 1e-4);
        EXPECT_NEAR(Dot(a, b), product(a.x, b.x) + product(a.y, b.y) + product(a.z, b.z), 1e-4);
    }
}

}  // namespace
