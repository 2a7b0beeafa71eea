#include <pipeline/scene/Vector3.h>

#include <gtest/gtest.h>

namespace
{

using namespace Pipeline;

TEST(Vector3, CrossIsPerpendicularAndRightHanded)
{
    EXPECT_EQ(Cross({1, 0, 0}, {0, 1, 0}), (Vector3{0, 0, 1}));
    const Vector3 a = {1, 2, 3};
    const Vector3 b = {-4, 5, 7};
    EXPECT_EQ(Cross(a, b), (Vector3{-1, -19, 13}));
    EXPECT_EQ(Dot(Cross(a, b), a), 0);
    EXPECT_EQ(Dot(Cross(a, b), b), 0);
}

TEST(Vector3, LengthIsTheRootOfTheDotProduct)
{
    EXPECT_EQ(Dot({1, 2, 3}, {4, 5, 6}), 32);
    EXPECT_EQ(Length({2, 3, 6}), 7);
    EXPECT_EQ(Minus({1, 2, 3}, {3, 2, 1}), (Vector3{-2, 0, 2}));
}

}  // namespace
