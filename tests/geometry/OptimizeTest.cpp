#include <importing/geometry/Geometry.h>

#include <geometry/AgainstModel.h>
#include <geometry/Overrides.h>
#include <geometry/Refusals.h>
#include <models/GeometryModels.h>
#include <support/Meshes.h>
#include <support/Random.h>

#include <bit>
#include <limits>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace
{

using namespace Importing;
using namespace Support;

using Indices = std::vector<std::uint32_t>;

Geometry Welded(Geometry mesh)
{
    EXPECT_EQ(mesh.Optimize(), 0);
    return mesh;
}

/// Returns two triangles of six vertices, of which 3 equals 2 and 5 equals 0.
Geometry TwoTriangles()
{
    return MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 0}, {1, 1, 0}, {0, 0, 0}}, {0, 1, 2, 3, 4, 5});
}

float WithBits(float value, std::uint32_t bits)
{
    return std::bit_cast<float>(std::bit_cast<std::uint32_t>(value) ^ bits);
}

bool DifferInX(const Vertex& a, const Vertex& b)
{
    const auto bits = [](const Vertex& v) { return std::bit_cast<std::uint32_t>(Vertex(v).GetPosition().x); };
    return ((bits(a) ^ bits(b)) & 0xFFFFFF00U) != 0;
}

bool DifferInYZ(const Vertex& a, const Vertex& b)
{
    const D3DXVECTOR3 p = Vertex(a).GetPosition();
    const D3DXVECTOR3 q = Vertex(b).GetPosition();
    return p.y != q.y || p.z != q.z;
}

Vertex Plain(const D3DXVECTOR3& position) { return position; }

Vertex WithWeights(const D3DXVECTOR3& position)
{
    Vertex vertex(position);
    vertex.AddWeight(3, 0.25F);
    vertex.AddWeight(5, 0.75F);
    return vertex;
}

/// Finds two vertices with equal hashes that differ in the given way, by a birthday search: among about 100,000
/// vertices some of the 4,294,967,296 hashes repeat.
template <typename MakePosition, typename Differ>
std::pair<Vertex, Vertex> FindCollision(MakePosition makePosition, Differ differ, Vertex (*dress)(const D3DXVECTOR3&))
{
    constexpr std::uint32_t kMostCandidates = 2'000'000;
    std::unordered_map<std::uint32_t, D3DXVECTOR3> seen;
    Random random(1);
    for (std::uint32_t i = 0; i < kMostCandidates; ++i)
    {
        Vertex candidate = dress(makePosition(random));
        const auto [found, isNew] = seen.emplace(candidate.GetHash(), candidate.GetPosition());
        Vertex earlier = dress(found->second);
        if (!isNew && differ(earlier, candidate) && earlier.GetHash() == candidate.GetHash())
            return {earlier, candidate};
    }
    throw std::runtime_error("no two candidates share a hash");
}

D3DXVECTOR3 AnyPosition(Random& random)
{
    const float x = random.Between(1, 1000);
    const float y = random.Between(1, 1000);
    return {x, y, random.Between(1, 1000)};
}

const std::pair<Vertex, Vertex>& Colliding()
{
    static const std::pair<Vertex, Vertex> pair = FindCollision(AnyPosition, DifferInX, Plain);
    return pair;
}

const std::pair<Vertex, Vertex>& CollidingWithEqualX()
{
    const auto position = [](Random& random) {
        D3DXVECTOR3 any = AnyPosition(random);
        any.x = 1;
        return any;
    };
    static const std::pair<Vertex, Vertex> pair = FindCollision(position, DifferInYZ, Plain);
    return pair;
}

TEST(Optimize, MeshWithoutDuplicatesDoesNotChange) { ExpectUntouched(Quad(), 0, &Geometry::Optimize); }

TEST(Optimize, UnusedVerticesAreKeptWithoutDuplicates)
{
    Geometry mesh = Quad();
    mesh.VertexArray.emplace_back(9.0F, 9.0F, 9.0F);
    ExpectUntouched(mesh, 0, &Geometry::Optimize);
}

TEST(Optimize, MeshWithoutDuplicatesMayContainBadIndices)
{
    Geometry mesh = Quad();
    mesh.IndexArray = {7, 8, 0xFFFFFFFFU};
    ExpectUntouched(mesh, 0, &Geometry::Optimize);
}

TEST(Optimize, EmptyMeshDoesNotChange)
{
    ExpectUntouched(Geometry(), 0, &Geometry::Optimize);
    ExpectUntouched(MeshOf({}, {0, 1, 2}), 0, &Geometry::Optimize);
}

TEST(Optimize, EqualVerticesBecomeOne)
{
    const Geometry mesh = Welded(TwoTriangles());
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 2, 3, 0}));
    ASSERT_EQ(mesh.VertexArray.size(), 4U);
    const std::size_t survivors[] = {0, 1, 2, 4};
    const Geometry hashed = Hashed(TwoTriangles());
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(SameVertex(mesh.VertexArray[i], hashed.VertexArray[survivors[i]]));
}

TEST(Optimize, UnusedVertexIsDroppedIfThereAreDuplicates)
{
    Geometry mesh = TwoTriangles();
    mesh.VertexArray.emplace_back(9.0F, 9.0F, 9.0F);
    EXPECT_TRUE(SameGeometry(Welded(mesh), Welded(TwoTriangles())));
}

TEST(Optimize, UnusedDuplicatesStillDropUnusedVertices)
{
    Geometry mesh = Triangle();
    mesh.VertexArray.resize(5, Vertex(9, 9, 9));
    EXPECT_EQ(Welded(mesh).VertexArray.size(), 3U);
    mesh.IndexArray.clear();
    EXPECT_TRUE(Welded(mesh).VertexArray.empty());
}

TEST(Optimize, SurvivorsAreInTheOrderOfTheirFirstUse)
{
    Geometry mesh = TwoTriangles();
    mesh.IndexArray = {4, 3, 2, 5, 1, 0};
    mesh = Welded(mesh);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 1, 2, 3, 2}));
    EXPECT_EQ(mesh.VertexArray[0].GetPosition(), D3DXVECTOR3(1, 1, 0));
    EXPECT_EQ(mesh.VertexArray[1].GetPosition(), D3DXVECTOR3(0, 1, 0));
    EXPECT_EQ(mesh.VertexArray[2].GetPosition(), D3DXVECTOR3(0, 0, 0));
    EXPECT_EQ(mesh.VertexArray[3].GetPosition(), D3DXVECTOR3(1, 0, 0));
}

TEST(Optimize, OfEqualVerticesTheFirstUsedIsKept)
{
    // Both differ only in the lowest bits, so the test can see which one is kept.
    Geometry mesh = MeshOf({{1, 0, 0}, {WithBits(1, 0x7F), 0, 0}}, {1, 0});
    mesh = Welded(mesh);
    ASSERT_EQ(mesh.VertexArray.size(), 1U);
    EXPECT_TRUE(SameFloats(mesh.VertexArray[0].GetPosition().x, WithBits(1, 0x7F)));
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 0}));
}

TEST(Optimize, PositionsThatDifferInTheLowestEightBitsWeld)
{
    for (const std::uint32_t bits : {0x01U, 0x80U, 0xFFU})
    {
        const D3DXVECTOR3 nudged(WithBits(1, bits), WithBits(2, bits), WithBits(-3, bits));
        EXPECT_EQ(Welded(MeshOf({{1, 2, -3}, nudged}, {0, 1})).VertexArray.size(), 1U) << bits;
    }
}

TEST(Optimize, PositionsThatDifferInTheNinthBitDoNotWeld)
{
    const Geometry mesh = MeshOf({{1, 2, 3}, {WithBits(1, 0x100), 2, 3}}, {0, 1});
    EXPECT_EQ(Welded(mesh).VertexArray.size(), 2U);
}

TEST(Optimize, AdjacentFloatsAcrossAMaskBoundaryDoNotWeld)
{
    const float below = std::bit_cast<float>(0x3F8000FFU);
    const float above = std::bit_cast<float>(0x3F800100U);
    EXPECT_EQ(Welded(MeshOf({{below, 0, 0}, {above, 0, 0}}, {0, 1})).VertexArray.size(), 2U);
}

TEST(Optimize, PositiveAndNegativeZeroDoNotWeld)
{
    EXPECT_EQ(Welded(MeshOf({{0, 1, 2}, {-0.0F, 1, 2}}, {0, 1})).VertexArray.size(), 2U);
    EXPECT_EQ(Welded(MeshOf({{1, 0, 2}, {1, -0.0F, 2}}, {0, 1})).VertexArray.size(), 2U);
}

TEST(Optimize, EqualNaNVerticesWeld)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Welded(MeshOf({{nan, 1, 2}, {nan, 1, 2}}, {0, 1})).VertexArray.size(), 1U);
}

TEST(Optimize, VerticesWithDifferentNormalsTextureCoordinatesOrWeightsDoNotWeld)
{
    Geometry mesh = MeshOf(std::vector<D3DXVECTOR3>(5, {1, 2, 3}), {0, 1, 2, 3, 4});
    mesh.VertexArray[1].SetNormal(D3DXVECTOR3(0, 0, 1));
    mesh.VertexArray[2].SetTexCoord(D3DXVECTOR2(0, 0), 0);
    mesh.VertexArray[3].AddWeight(0, 1);
    mesh = Welded(mesh);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 3, 0}));
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
}

TEST(Optimize, SurvivorsKeepAllFields)
{
    Geometry mesh = TwoTriangles();
    mesh.VertexArray[4].SetNormal(D3DXVECTOR3(1, 2, 3));
    mesh.VertexArray[4].SetTexCoord(D3DXVECTOR2(0.25F, 0.5F), 2);
    mesh.VertexArray[4].AddWeight(3, 0.5F);
    const Geometry before = Hashed(mesh);
    EXPECT_TRUE(SameVertex(Welded(mesh).VertexArray[3], before.VertexArray[4]));
}

TEST(Optimize, WeldingInvalidatesTheHashOfTheMeshAndKeepsThoseOfTheSurvivors)
{
    Geometry mesh = Hashed(TwoTriangles());
    mesh = Welded(mesh);
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_TRUE(vertex.GetIsHashCodeValid());
}

TEST(Optimize, QuickTestComputesEveryHashOfAMeshWithoutDuplicates)
{
    Geometry mesh = Quad();
    mesh.Optimize();
    EXPECT_FALSE(mesh.GetIsHashCodeValid());
    for (Vertex& vertex : mesh.VertexArray)
        EXPECT_TRUE(vertex.GetIsHashCodeValid());
}

TEST(Optimize, PolySizeDoesNotMatter)
{
    Geometry four = TwoTriangles();
    four.SetPolySize(4);
    EXPECT_EQ(Welded(four).IndexArray, (Indices{0, 1, 2, 2, 3, 0}));

    MeshOfPolySize mesh(TwoTriangles(), 4);
    EXPECT_EQ(mesh.Optimize(), 0);
    EXPECT_EQ(mesh.GetCalls(), 0);
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
}

TEST(Optimize, TrailingIndicesAreUsed)
{
    Geometry mesh = TwoTriangles();
    mesh.IndexArray = {0, 5, 3, 2};
    EXPECT_EQ(Welded(mesh).IndexArray, (Indices{0, 0, 1, 1}));
}

TEST(Optimize, KeepsThePointCacheJointsNameAndBindShape)
{
    Geometry mesh = TwoTriangles();
    mesh.SetName("mesh");
    mesh.JointArray.emplace_back("hip");
    mesh.PointCachePositions.assign(6, D3DXVECTOR3(1, 2, 3));
    mesh.PointCacheNormals.assign(6, D3DXVECTOR3(3, 2, 1));
    mesh.SetBindShapeTransform(RandomMatrix(2));
    Geometry expected = mesh;
    mesh = Welded(mesh);
    expected.VertexArray = mesh.VertexArray;
    expected.IndexArray = mesh.IndexArray;
    EXPECT_TRUE(SameGeometry(mesh, expected));
}

TEST(Optimize, InvalidatesThroughTheVirtualTableOnlyWhenItWelds)
{
    MeshOfCountedHash distinct(Quad());
    distinct.Optimize();
    EXPECT_EQ(distinct.GetInvalidations(), 0);
    MeshOfCountedHash doubled(TwoTriangles());
    doubled.Optimize();
    EXPECT_EQ(doubled.GetInvalidations(), 1);
}

TEST(Optimize, EveryBadIndexIsRefusedBeforeAnythingChanges)
{
    ExpectEveryBadIndexRefused(Hashed(TwoTriangles()), 6, &Geometry::Optimize);
}

TEST(Optimize, SecondCallChangesNothing)
{
    const Geometry once = Welded(UnindexedGrid(5, 4));
    EXPECT_TRUE(SameGeometry(Welded(once), once));
}

TEST(Optimize, UnindexedGridBecomesTheIndexedOne)
{
    const Geometry mesh = Welded(UnindexedGrid(30, 20));
    const Geometry grid = Grid(30, 20);
    EXPECT_EQ(mesh.VertexArray.size(), grid.VertexArray.size());
    ASSERT_EQ(mesh.IndexArray.size(), grid.IndexArray.size());
    for (std::size_t i = 0; i < mesh.IndexArray.size(); ++i)
        EXPECT_EQ(Vertex(mesh.VertexArray[mesh.IndexArray[i]]).GetPosition(),
                  Vertex(grid.VertexArray[grid.IndexArray[i]]).GetPosition());
}

TEST(Optimize, CollidingVerticesThatDifferInXDoNotWeld)
{
    Geometry mesh;
    mesh.VertexArray = {Colliding().first, Colliding().second};
    mesh.IndexArray = {0, 1};
    mesh = Welded(mesh);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1}));
    ASSERT_EQ(mesh.VertexArray.size(), 2U);
    EXPECT_TRUE(SameVertex(mesh.VertexArray[0], Colliding().first));
    EXPECT_TRUE(SameVertex(mesh.VertexArray[1], Colliding().second));
}

TEST(Optimize, LatestOfCollidingVerticesReplacesTheEarlier)
{
    const auto& [a, b] = Colliding();
    Geometry mesh;
    mesh.VertexArray = {a, b, a, a};
    mesh.IndexArray = {0, 1, 1, 0, 2};
    mesh = Welded(mesh);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 1, 2, 2}));
    ASSERT_EQ(mesh.VertexArray.size(), 3U);
    EXPECT_TRUE(SameVertex(mesh.VertexArray[2], a));
}

TEST(Optimize, CollidingVerticesUsedAlternatelyMayFillTheMesh)
{
    const auto& [a, b] = Colliding();
    Geometry mesh;
    mesh.VertexArray = {a, b, b, b};
    mesh.IndexArray = {0, 1, 0, 1};
    mesh = Welded(mesh);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 3}));
    EXPECT_EQ(mesh.VertexArray.size(), 4U);
}

TEST(Optimize, VertexThatSurvivesTwiceKeepsAllFieldsBothTimes)
{
    const auto [a, b] = FindCollision(AnyPosition, DifferInX, WithWeights);
    Geometry mesh;
    mesh.VertexArray = {a, b, b, b};
    mesh.IndexArray = {0, 1, 0, 0};
    mesh = Welded(mesh);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 1, 2, 2}));
    ASSERT_EQ(mesh.VertexArray.size(), 3U);
    EXPECT_TRUE(SameVertex(mesh.VertexArray[0], a));
    EXPECT_TRUE(SameVertex(mesh.VertexArray[1], b));
    EXPECT_TRUE(SameVertex(mesh.VertexArray[2], a));
}

TEST(Optimize, CollidingVerticesUsedAlternatelyBeyondTheMeshAreRefused)
{
    Geometry mesh;
    mesh.VertexArray = {Colliding().first, Colliding().second};
    mesh.IndexArray = {0, 1, 0};
    ExpectBadSubscript(Hashed(mesh), &Geometry::Optimize);
    mesh.VertexArray.push_back(Colliding().first);
    mesh.IndexArray = {0, 1, 2, 1, 0, 1};
    ExpectBadSubscript(Hashed(mesh), &Geometry::Optimize);
}

TEST(Optimize, YAndZAreComparedOnlyThroughTheHash)
{
    const auto& [a, b] = CollidingWithEqualX();
    Geometry mesh;
    mesh.VertexArray = {a, b};
    mesh.IndexArray = {0, 1, 0, 1};
    mesh = Welded(mesh);
    EXPECT_EQ(mesh.IndexArray, (Indices{0, 0, 0, 0}));
    ASSERT_EQ(mesh.VertexArray.size(), 1U);
    EXPECT_TRUE(SameVertex(mesh.VertexArray[0], a));
}

TEST(Optimize, MatchesTheModel) { ExpectLikeModel(&Geometry::Optimize, &Models::Optimize); }

TEST(Optimize, MatchesTheModelOnLargerMeshes)
{
    RandomMeshOptions options;
    options.maxVertices = 300;
    options.maxFaces = 300;
    ExpectLikeModel(&Geometry::Optimize, &Models::Optimize, options);
}

TEST(Optimize, MatchesTheModelOnCollidingVertices)
{
    const Vertex palette[] = {Colliding().first, Colliding().second, CollidingWithEqualX().first,
                              CollidingWithEqualX().second};
    for (std::uint32_t seed = 1; seed <= kRandomMeshes; ++seed)
    {
        Random random(seed);
        Geometry mesh;
        const std::uint32_t vertices = 1 + random.Below(12);
        for (std::uint32_t i = 0; i < vertices; ++i)
            mesh.VertexArray.push_back(palette[random.Below(4)]);
        const std::uint32_t indices = random.Below(16);
        for (std::uint32_t i = 0; i < indices; ++i)
            mesh.IndexArray.push_back(random.Below(vertices));
        ASSERT_TRUE(SameOutcome(mesh, &Geometry::Optimize, &Models::Optimize)) << "seed " << seed;
    }
}

}  // namespace
