#include <importing/geometry/Triangles.h>

#include <support/SameBits.h>

#include <limits>
#include <stdexcept>

namespace
{

using namespace Importing;
using namespace Support;

TEST(Triangles, TrailingIndicesBelongToNone)
{
    EXPECT_EQ(TriangleCount({}), 0U);
    EXPECT_EQ(TriangleCount({0, 1}), 0U);
    EXPECT_EQ(TriangleCount({0, 1, 2}), 1U);
    EXPECT_EQ(TriangleCount({0, 1, 2, 0, 1}), 1U);
    EXPECT_EQ(TriangleCount({0, 1, 2, 0, 1, 2, 0}), 2U);
}

TEST(Triangles, IndicesOfWholeTrianglesAreChecked)
{
    EXPECT_NO_THROW(CheckTriangles({}, 0));
    EXPECT_NO_THROW(CheckTriangles({0, 1, 2}, 3));
    EXPECT_THROW(CheckTriangles({0, 1, 3}, 3), std::out_of_range);
    EXPECT_THROW(CheckTriangles({0xFFFFFFFFU, 1, 2}, 3), std::out_of_range);
    EXPECT_THROW(CheckTriangles({0, 0, 0}, 0), std::out_of_range);
}

TEST(Triangles, TrailingIndicesAreNotChecked)
{
    EXPECT_NO_THROW(CheckTriangles({0, 1, 2, 99, 99}, 3));
    EXPECT_NO_THROW(CheckTriangles({99, 99}, 0));
}

TEST(Triangles, BadIndexThrowsTheDocumentedText)
{
    try
    {
        CheckTriangles({0, 1, 3}, 3);
        FAIL() << "nothing was thrown";
    }
    catch (const std::out_of_range& error)
    {
        EXPECT_STREQ(error.what(), "invalid vector<T> subscript");
    }
}

TEST(Triangles, CrossPointsAlongTheNormalWithTwiceTheAreaAsLength)
{
    EXPECT_TRUE(SameFloats(TriangleCross({1, 1, 1}, {4, 1, 1}, {1, 3, 1}), D3DXVECTOR3(0, 0, 6)));
    EXPECT_TRUE(SameFloats(TriangleCross({1, 1, 1}, {1, 3, 1}, {4, 1, 1}), D3DXVECTOR3(0, 0, -6)));
    EXPECT_TRUE(SameFloats(TriangleCross({0, 0, 0}, {0, 2, 0}, {0, 0, 3}), D3DXVECTOR3(6, 0, 0)));
    EXPECT_TRUE(SameFloats(TriangleCross({0, 0, 0}, {0, 0, 2}, {3, 0, 0}), D3DXVECTOR3(0, 6, 0)));
}

TEST(Triangles, NormalHasUnitLength)
{
    EXPECT_TRUE(SameFloats(TriangleNormal({0, 0, 0}, {0, -1, 0}, {4, -1, -3}), D3DXVECTOR3(0.6F, 0, 0.8F)));
}

TEST(Triangles, NormalOfATriangleWithoutAreaIsZero)
{
    EXPECT_TRUE(SameFloats(TriangleNormal({1, 2, 3}, {1, 2, 3}, {4, 5, 6}), D3DXVECTOR3(0, 0, 0)));
    EXPECT_TRUE(SameFloats(TriangleNormal({0, 0, 0}, {1, 0, 0}, {2, 0, 0}), D3DXVECTOR3(0, 0, 0)));
}

TEST(Triangles, NormalOfATriangleWithANaNCornerIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const D3DXVECTOR3 normal = TriangleNormal({nan, 0, 0}, {1, 0, 0}, {0, 1, 0});
    EXPECT_TRUE(std::isnan(normal.x) && std::isnan(normal.y) && std::isnan(normal.z));
}

}  // namespace
