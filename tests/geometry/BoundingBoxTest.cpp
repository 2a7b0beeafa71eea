#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>

#include <limits>

namespace
{

using namespace Importing;
using namespace Support;

constexpr float kLargest = 3.4028235e38F;
constexpr float kSmallestPositive = 1.1754944e-38F;
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct Bounds
{
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
};

Bounds BoundsOf(const Geometry& mesh)
{
    Bounds bounds{};
    EXPECT_EQ(mesh.GetBoundingBox(bounds.min, bounds.max), 0);
    return bounds;
}

TEST(BoundingBox, OfAnEmptyMeshEqualsTheStartValues)
{
    const Bounds bounds = BoundsOf(Geometry());
    EXPECT_TRUE(SameFloats(bounds.min, D3DXVECTOR3(kLargest, kLargest, kLargest)));
    EXPECT_TRUE(SameFloats(bounds.max, D3DXVECTOR3(kSmallestPositive, kSmallestPositive, kSmallestPositive)));
}

TEST(BoundingBox, StartsAtTheLargestFloatAndTheSmallestPositiveNormalOne)
{
    EXPECT_EQ(std::bit_cast<std::uint32_t>(kLargest), 0x7F7FFFFFU);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(kSmallestPositive), 0x00800000U);
}

TEST(BoundingBox, ContainsEveryVertex)
{
    const Bounds bounds = BoundsOf(Box24(D3DXVECTOR3(-1, 2, -3), D3DXVECTOR3(4, 5, 6)));
    EXPECT_TRUE(SameFloats(bounds.min, D3DXVECTOR3(-1, 2, -3)));
    EXPECT_TRUE(SameFloats(bounds.max, D3DXVECTOR3(4, 5, 6)));
}

TEST(BoundingBox, ContainsVerticesThatNoIndexUses)
{
    Geometry mesh = Quad();
    mesh.VertexArray.emplace_back(9.0F, 9.0F, 9.0F);
    EXPECT_TRUE(SameFloats(BoundsOf(mesh).max, D3DXVECTOR3(9, 9, 9)));
}

TEST(BoundingBox, MaximumStartsAtSmallestPositiveFloat)
{
    const Bounds bounds = BoundsOf(Box24(D3DXVECTOR3(-3, -3, -3), D3DXVECTOR3(2, -1, 0)));
    EXPECT_TRUE(SameFloats(bounds.min, D3DXVECTOR3(-3, -3, -3)));
    EXPECT_TRUE(SameFloats(bounds.max, D3DXVECTOR3(2, kSmallestPositive, kSmallestPositive)));
}

TEST(BoundingBox, MeshEntirelyBelowZeroInYHasTheStartValueAsMaximum)
{
    const Bounds bounds = BoundsOf(Quad(1, -3, 2, -1));
    EXPECT_TRUE(SameFloats(bounds.max.y, kSmallestPositive));
    EXPECT_TRUE(SameFloats(bounds.min.y, -3.0F));
}

TEST(BoundingBox, DenormalsAreBelowTheStartValueOfTheMaximum)
{
    const float denormal = std::numeric_limits<float>::denorm_min();
    EXPECT_TRUE(SameFloats(BoundsOf(MeshOf({{denormal, 0, 0}}, {})).max.x, kSmallestPositive));
}

TEST(BoundingBox, NaNCoordinateIsIgnoredOnItsAxisOnly)
{
    const Bounds bounds = BoundsOf(MeshOf({{kNaN, 1, 2}, {3, kNaN, 4}}, {}));
    EXPECT_TRUE(SameFloats(bounds.min, D3DXVECTOR3(3, 1, 2)));
    EXPECT_TRUE(SameFloats(bounds.max, D3DXVECTOR3(3, 1, 4)));
}

TEST(BoundingBox, InfiniteCoordinatesCount)
{
    const Bounds bounds = BoundsOf(MeshOf({{kInfinity, -kInfinity, 0}}, {}));
    EXPECT_TRUE(SameFloats(bounds.min, D3DXVECTOR3(kLargest, -kInfinity, 0)));
    EXPECT_TRUE(SameFloats(bounds.max, D3DXVECTOR3(kInfinity, kSmallestPositive, kSmallestPositive)));
}

TEST(BoundingBox, OfEqualZerosTheFirstIsKept)
{
    EXPECT_TRUE(SameFloats(BoundsOf(MeshOf({{-0.0F, 0, 0}, {0.0F, 0, 0}}, {})).min.x, -0.0F));
    EXPECT_TRUE(SameFloats(BoundsOf(MeshOf({{0.0F, 0, 0}, {-0.0F, 0, 0}}, {})).min.x, 0.0F));
}

TEST(BoundingBox, ChangesNothing)
{
    ExpectUntouched(Quad(), 0, [](Geometry& mesh) {
        D3DXVECTOR3 min;
        D3DXVECTOR3 max;
        return mesh.GetBoundingBox(min, max);
    });
}

TEST(BoundingBox, MatchesTheModel)
{
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        const Geometry mesh = RandomMesh(seed);
        const Bounds bounds = BoundsOf(mesh);
        Bounds expected{};
        Models::GetBoundingBox(mesh, expected.min, expected.max);
        ASSERT_TRUE(SameFloats(bounds.min, expected.min)) << "seed " << seed;
        ASSERT_TRUE(SameFloats(bounds.max, expected.max)) << "seed " << seed;
    }
}

}  // namespace
