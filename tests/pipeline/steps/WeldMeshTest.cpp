#include <pipeline/steps/WeldMesh.h>

#include <gtest/gtest.h>
#include <support/Meshes.h>
#include <support/Random.h>
#include <support/RandomMesh.h>
#include <support/SameBits.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <unordered_map>
#include <vector>

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Pipeline::WeldMesh;
using Support::Random;

float WithBits(float value, std::uint32_t flipped)
{
    return std::bit_cast<float>(std::bit_cast<std::uint32_t>(value) ^ flipped);
}

/// Two copies of a vertex, each used once.
Geometry Twins()
{
    Geometry mesh;
    Vertex vertex(1, 2, 3);
    vertex.SetNormal(D3DXVECTOR3(0, 0, 1));
    vertex.SetTexCoord({0.5F, 0.25F}, 0);
    vertex.AddWeight(2, 0.5F);
    mesh.VertexArray = {vertex, vertex};
    mesh.IndexArray = {1, 0, 1};
    return mesh;
}

std::size_t CountAfterWelding(Geometry mesh)
{
    WeldMesh(mesh);
    return mesh.VertexArray.size();
}

TEST(WeldMesh, WeldsTheLowestEightBitsAway)
{
    Geometry mesh = Twins();
    mesh.VertexArray[1].SetPosition(D3DXVECTOR3(WithBits(1, 0xFF), 2, WithBits(3, 0x01)));
    mesh.VertexArray[1].SetNormal(D3DXVECTOR3(0, 0, WithBits(1, 0x80)));
    mesh.VertexArray[1].SetTexCoord({WithBits(0.5F, 0x10), 0.25F}, 0);
    const Vertex first = mesh.VertexArray[1];
    WeldMesh(mesh);
    ASSERT_EQ(mesh.VertexArray.size(), 1U);
    EXPECT_TRUE(Support::SameFloats(mesh.VertexArray[0].GetPosition(), Vertex(first).GetPosition())) << "used first";
    EXPECT_EQ(mesh.IndexArray, (std::vector<std::uint32_t>{0, 0, 0}));
}

TEST(WeldMesh, ComparesEveryAttribute)
{
    EXPECT_EQ(CountAfterWelding(Twins()), 1U);
    const auto expectApart = [](void (*change)(Vertex&)) {
        Geometry mesh = Twins();
        change(mesh.VertexArray[1]);
        EXPECT_EQ(CountAfterWelding(mesh), 2U);
    };
    expectApart([](Vertex& v) { v.SetPosition(D3DXVECTOR3(1, 2, WithBits(3, 0x100))); });
    expectApart([](Vertex& v) { v.SetNormal(D3DXVECTOR3(0, -0.0F, 1)); });
    expectApart([](Vertex& v) { v.SetTexCoord({0.5F, WithBits(0.25F, 0x100)}, 0); });
    expectApart([](Vertex& v) { v.SetTexCoord({0, 0}, 1); });
    expectApart([](Vertex& v) { v.SetWeight(3, 0.5F, 0); });
    expectApart([](Vertex& v) { v.SetWeight(2, WithBits(0.5F, 1), 0); });
    expectApart([](Vertex& v) { v.AddWeight(0, 0); });
    expectApart([](Vertex& v) { v.ClearWeights(); });
}

TEST(WeldMesh, EqualNaNsAreWelded)
{
    Geometry mesh = Twins();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (Vertex& vertex : mesh.VertexArray)
        vertex.SetPosition(D3DXVECTOR3(nan, 0, 0));
    EXPECT_EQ(CountAfterWelding(mesh), 1U);
}

TEST(WeldMesh, BadIndicesChangeNothing)
{
    Geometry mesh = Twins();
    mesh.IndexArray.push_back(2);
    EXPECT_THROW(WeldMesh(mesh), std::out_of_range);
    EXPECT_EQ(mesh.VertexArray.size(), 2U);
    EXPECT_EQ(mesh.IndexArray, (std::vector<std::uint32_t>{1, 0, 1, 2}));
}

TEST(WeldMesh, DifferentVerticesOfOneHashStayApart)
{
    // A birthday search: among about 100,000 vertices some of the 4,294,967,296 hashes repeat.
    std::unordered_map<std::uint32_t, D3DXVECTOR3> seen;
    Random random(1);
    for (int i = 0; i < 2'000'000; ++i)
    {
        const auto y = static_cast<float>(random.Below(60'000));  // whole numbers of 16 bits are never nearly equal
        Vertex candidate(1, y, static_cast<float>(random.Below(60'000)));
        const auto [found, isNew] = seen.emplace(candidate.GetHash(), candidate.GetPosition());
        if (isNew || found->second == candidate.GetPosition())
            continue;
        Geometry mesh;
        mesh.VertexArray = {candidate, Vertex(found->second), candidate};
        mesh.IndexArray = {0, 1, 2, 0, 1, 2};
        WeldMesh(mesh);
        EXPECT_EQ(mesh.VertexArray.size(), 2U);
        EXPECT_EQ(mesh.IndexArray, (std::vector<std::uint32_t>{0, 1, 0, 0, 1, 0}));
        return;
    }
    FAIL() << "no two candidates share a hash";
}

TEST(WeldMesh, AGridInAnyOrderOfTrianglesLosesNoVertex)
{
    constexpr std::uint32_t kCells = 399;
    const Geometry grid = Support::Grid(kCells, kCells);
    const std::size_t triangles = grid.IndexArray.size() / 3;
    std::vector<std::size_t> order(triangles);
    std::iota(order.begin(), order.end(), std::size_t{0});
    Random random(7);
    for (std::size_t i = triangles; i-- > 1;)
        std::swap(order[i], order[random.Below(static_cast<std::uint32_t>(i + 1))]);
    Geometry soup;
    for (const std::size_t triangle : order)
    {
        for (std::size_t corner = 3 * triangle; corner < 3 * triangle + 3; ++corner)
        {
            soup.IndexArray.push_back(static_cast<std::uint32_t>(soup.VertexArray.size()));
            soup.VertexArray.push_back(grid.VertexArray[grid.IndexArray[corner]]);
        }
    }
    WeldMesh(soup);
    EXPECT_EQ(soup.VertexArray.size(), 160'000U);
    EXPECT_EQ(soup.IndexArray.size(), 3 * triangles);
}

TEST(WeldMesh, AWallOfEqualXLosesNoVertex)
{
    constexpr std::uint32_t kSide = 300;
    Geometry wall;
    for (std::uint32_t i = 0; i < 2 * kSide * kSide; ++i)
    {
        const std::uint32_t place = i % (kSide * kSide);
        wall.VertexArray.emplace_back(1.0F, static_cast<float>(place / kSide), static_cast<float>(place % kSide));
        wall.IndexArray.push_back(i);
    }
    EXPECT_EQ(CountAfterWelding(wall), std::size_t{kSide} * kSide);
}

class WeldMeshPropertiesTest : public testing::TestWithParam<std::uint32_t>
{};

TEST_P(WeldMeshPropertiesTest, DoesWhatOptimizeDoesWhereHashesDoNotCollide)
{
    for (std::uint32_t i = 0; i < 100; ++i)
    {
        Geometry mesh = Support::RandomMesh(100 * GetParam() + i);
        for (Vertex& vertex : mesh.VertexArray)
            vertex.GetHash();
        Geometry expected = mesh;
        bool throws = false;
        try
        {
            expected.Optimize();
        }
        catch (const std::out_of_range&)
        {
            throws = true;
        }
        if (throws)
            EXPECT_THROW(WeldMesh(mesh), std::out_of_range);
        else
            WeldMesh(mesh);
        EXPECT_TRUE(Support::SameGeometry(mesh, expected)) << "mesh " << 100 * GetParam() + i;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WeldMeshPropertiesTest, testing::Range(0U, 20U));

}  // namespace
