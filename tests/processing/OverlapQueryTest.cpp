#include <importing/processing/OverlapQuery.h>

#include <importing/math/Box.h>
#include <support/RandomScene.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::Dice;

using Found = std::vector<std::uint32_t>;

Found Ask(const std::vector<Box>& boxes, const Box& box)
{
    OverlapQuery query(boxes);
    Found found{77};  // Earlier entries must be removed.
    query.Find(box, found);
    return found;
}

/// Compares every box, in order.
Found AskAll(const std::vector<Box>& boxes, const Box& box)
{
    Found found;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        if (Overlap(box, boxes[i]))
            found.push_back(static_cast<std::uint32_t>(i));
    return found;
}

Box Cube(float x, float y, float z) { return {{x, y, z}, {x + 1, y + 1, z + 1}}; }

TEST(OverlapQuery, FindsNothingWithoutBoxes) { EXPECT_TRUE(Ask({}, Cube(0, 0, 0)).empty()); }

TEST(OverlapQuery, FindsTouchingBoxesInAscendingOrder)
{
    const std::vector<Box> boxes = {Cube(5, 0, 0), Cube(1, 1, 1), Cube(0, 0, 0), Cube(-1, 0, 0), Cube(0, 0, 1.5F)};
    EXPECT_EQ(Ask(boxes, Cube(0, 0, 0)), (Found{1, 2, 3}));
}

TEST(OverlapQuery, FindsAllOfManyEqualBoxes)
{
    for (const std::size_t count : {7U, 8U, 9U, 64U, 65U, 100U, 1000U})
    {
        const std::vector<Box> boxes(count, Cube(0, 0, 0));
        EXPECT_EQ(Ask(boxes, Cube(1, 0, 0)), AskAll(boxes, Cube(1, 0, 0))) << count << " boxes";
        EXPECT_TRUE(Ask(boxes, Cube(2, 0, 0)).empty()) << count << " boxes";
    }
}

TEST(OverlapQuery, BothZerosAreEqual)
{
    const Box below{{-1, -1, -1}, {-0.0F, -0.0F, -0.0F}};
    const Box above{{0, 0, 0}, {1, 1, 1}};
    EXPECT_EQ(Ask({below}, above), Found{0});
    EXPECT_EQ(Ask({above}, below), Found{0});
}

TEST(OverlapQuery, ANaNCoordinateSeparatesNothing)
{
    Box odd = Cube(0, 0, 0);
    odd.min.x = NAN;
    EXPECT_EQ(Ask({odd}, Cube(-90, 0, 0)), Found{0});
    EXPECT_TRUE(Ask({odd}, Cube(90, 0, 0)).empty());
    odd.max.x = -NAN;
    EXPECT_EQ(Ask({odd}, Cube(90, 0, 0)), Found{0});
    EXPECT_EQ(Ask({Cube(90, 0, 0)}, odd), Found{0});
}

TEST(OverlapQuery, InfiniteBoxesOverlapEveryBoxAndNoEmptyPlace)
{
    const Box everything{{-INFINITY, -INFINITY, -INFINITY}, {INFINITY, INFINITY, INFINITY}};
    const std::vector<Box> boxes = {Cube(0, 0, 0), everything, EmptyBox()};
    EXPECT_EQ(Ask(boxes, everything), (Found{0, 1, 2}));
    EXPECT_EQ(Ask(boxes, Cube(5, 5, 5)), Found{1});
}

float Coordinate(Dice& dice)
{
    static constexpr std::array<float, 6> kOdd = {INFINITY, -INFINITY, 3e38F, -3e38F, -0.0F, NAN};
    return dice.OneIn(20) ? kOdd[static_cast<std::size_t>(dice.Below(6))] : static_cast<float>(dice.Between(-8, 8));
}

/// Returns a random box, sometimes inverted, infinite or NaN.
Box RandomBox(Dice& dice)
{
    Box box{{Coordinate(dice), Coordinate(dice), Coordinate(dice)}, {0, 0, 0}};
    box.max = box.min + D3DXVECTOR3{static_cast<float>(dice.Below(3)), 1, 1};
    if (dice.OneIn(20))
        box.max = D3DXVECTOR3{Coordinate(dice), Coordinate(dice), Coordinate(dice)};
    return dice.OneIn(30) ? EmptyBox() : box;
}

TEST(OverlapQuery, MatchesComparingEveryBox)
{
    for (std::uint32_t seed = 1; seed <= 300; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        std::vector<Box> boxes;
        for (int i = dice.Below(seed % 10 == 0 ? 1500 : 120); i > 0; --i)
            boxes.push_back(RandomBox(dice));
        OverlapQuery query(boxes);
        Found found;
        for (int i = 0; i < 40; ++i)
        {
            const Box box =
                i < 20 && !boxes.empty() ? boxes[static_cast<std::size_t>(dice.Index(boxes.size()))] : RandomBox(dice);
            query.Find(box, found);
            ASSERT_EQ(found, AskAll(boxes, box));
        }
    }
}

}  // namespace
