#include <importing/math/Box.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>
#include <tuple>

namespace
{

using namespace Importing;
using Support::SameBitsOrNaN;

const D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(Box, EmptyBoxContainsNothing)
{
    const Box box = EmptyBox();
    EXPECT_TRUE(SameBitsOrNaN(box.min, D3DXVECTOR3(kLargest, kLargest, kLargest)));
    EXPECT_TRUE(SameBitsOrNaN(box.max, D3DXVECTOR3(-kLargest, -kLargest, -kLargest)));
}

TEST(Box, CornersAreAllCombinationsOfMinAndMax)
{
    std::set<std::tuple<float, float, float>> corners;
    for (const D3DXVECTOR3& corner : Corners({D3DXVECTOR3(1, 2, 3), D3DXVECTOR3(4, 5, 6)}))
        corners.emplace(corner.x, corner.y, corner.z);
    const std::set<std::tuple<float, float, float>> expected = {{1, 2, 3}, {4, 2, 3}, {1, 5, 3}, {4, 5, 3},
                                                                {1, 2, 6}, {4, 2, 6}, {1, 5, 6}, {4, 5, 6}};
    EXPECT_EQ(corners, expected);
}

TEST(Box, ExtendingTheEmptyBoxGivesTheLocalBox)
{
    Box box = EmptyBox();
    Extend(box, {D3DXVECTOR3(-1, -2, -3), D3DXVECTOR3(4, 5, 6)}, kIdentity);
    EXPECT_TRUE(SameBitsOrNaN(box.min, D3DXVECTOR3(-1, -2, -3)));
    EXPECT_TRUE(SameBitsOrNaN(box.max, D3DXVECTOR3(4, 5, 6)));
}

TEST(Box, ExtendingNeverShrinks)
{
    Box box = {D3DXVECTOR3(-9, 0, -9), D3DXVECTOR3(9, 1, 9)};
    Extend(box, {D3DXVECTOR3(-1, -1, -1), D3DXVECTOR3(1, 2, 1)}, kIdentity);
    EXPECT_TRUE(SameBitsOrNaN(box.min, D3DXVECTOR3(-9, -1, -9)));
    EXPECT_TRUE(SameBitsOrNaN(box.max, D3DXVECTOR3(9, 2, 9)));
}

TEST(Box, APointExtendsTheSidesThatItIsBeyond)
{
    Box box = {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1)};
    Extend(box, D3DXVECTOR3(-1, 2, 0.5F));
    EXPECT_TRUE(SameBitsOrNaN(box.min, D3DXVECTOR3(-1, 0, 0)));
    EXPECT_TRUE(SameBitsOrNaN(box.max, D3DXVECTOR3(1, 2, 1)));
    Extend(box, D3DXVECTOR3(kNaN, -0.0F, 3));
    EXPECT_TRUE(SameBitsOrNaN(box.min, D3DXVECTOR3(-1, 0, 0)));
    EXPECT_TRUE(SameBitsOrNaN(box.max, D3DXVECTOR3(1, 2, 3)));
}

TEST(Box, CornersAreTransformedByTheMatrix)
{
    // A rotation by 90 degrees about z, from x to y, and a translation.
    const D3DXMATRIX matrix(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1);
    Box box = EmptyBox();
    Extend(box, {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 2, 3)}, matrix);
    EXPECT_TRUE(SameBitsOrNaN(box.min, D3DXVECTOR3(8, 20, 30)));
    EXPECT_TRUE(SameBitsOrNaN(box.max, D3DXVECTOR3(10, 21, 33)));
}

TEST(Box, NaNIsIgnored)
{
    Box box = EmptyBox();
    Extend(box, {D3DXVECTOR3(0, kNaN, 0), D3DXVECTOR3(1, kNaN, 1)},
           D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    // Every corner contains the NaN, and the products spread it to all coordinates.
    EXPECT_TRUE(SameBitsOrNaN(box.min, EmptyBox().min));
    EXPECT_TRUE(SameBitsOrNaN(box.max, EmptyBox().max));
}

TEST(Box, BoxesThatOnlyTouchOverlap)
{
    const Box box = {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1)};
    EXPECT_TRUE(Overlap(box, {D3DXVECTOR3(1, 0, 0), D3DXVECTOR3(2, 1, 1)}));
    EXPECT_TRUE(Overlap(box, {D3DXVECTOR3(1, 1, 1), D3DXVECTOR3(2, 2, 2)}));
}

TEST(Box, AGapOnOneAxisSeparates)
{
    const Box box = {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1)};
    for (int axis = 0; axis < 3; ++axis)
    {
        D3DXVECTOR3 offset(0, 0, 0);
        (axis == 0 ? offset.x : axis == 1 ? offset.y : offset.z) = 1.001F;
        const Box other = {box.min + offset, box.max + offset};
        EXPECT_FALSE(Overlap(box, other)) << "axis " << axis;
        EXPECT_FALSE(Overlap(other, box)) << "axis " << axis;
    }
}

TEST(Box, BoxesInsideOneAnotherOverlap)
{
    const Box outer = {D3DXVECTOR3(-5, -5, -5), D3DXVECTOR3(5, 5, 5)};
    const Box inner = {D3DXVECTOR3(-1, -1, -1), D3DXVECTOR3(1, 1, 1)};
    EXPECT_TRUE(Overlap(outer, inner));
    EXPECT_TRUE(Overlap(inner, outer));
    EXPECT_TRUE(Overlap(inner, inner));
}

TEST(Box, NaNSeparatesNothing)
{
    const Box box = {D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1)};
    EXPECT_TRUE(Overlap(box, {D3DXVECTOR3(kNaN, 0, 0), D3DXVECTOR3(kNaN, 1, 1)}));
    EXPECT_FALSE(Overlap(box, {D3DXVECTOR3(kNaN, 7, 0), D3DXVECTOR3(kNaN, 8, 1)}));
}

TEST(Box, BoxesOverlapIfTheirIntervalsOverlapOnAllAxes)
{
    Support::RandomFloats random(3);
    const auto whole = [&random] { return static_cast<float>(random.Integer(8)); };
    for (int i = 0; i < 5000; ++i)
    {
        const D3DXVECTOR3 a(whole(), whole(), whole());
        const D3DXVECTOR3 b(whole(), whole(), whole());
        const D3DXVECTOR3 sizeA(whole(), whole(), whole());
        const D3DXVECTOR3 sizeB(whole(), whole(), whole());
        // Intervals share a point if the later start is not beyond the earlier end.
        const auto share = [](float s, float e, float t, float f) { return std::max(s, t) <= std::min(e, f); };
        const bool expected = share(a.x, a.x + sizeA.x, b.x, b.x + sizeB.x) &&
                              share(a.y, a.y + sizeA.y, b.y, b.y + sizeB.y) &&
                              share(a.z, a.z + sizeA.z, b.z, b.z + sizeB.z);
        EXPECT_EQ(Overlap({a, a + sizeA}, {b, b + sizeB}), expected) << i;
    }
}

}  // namespace
