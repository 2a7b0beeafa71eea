#include <pipeline/steps/WeldMesh.h>

#include <gtest/gtest.h>
#include <meshoptimizer.h>
#include <support/Random.h>

#include <cstdint>
#include <map>
#include <vector>

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Support::Random;

/// A vertex as meshoptimizer compares it: byte by byte.
struct PlainVertex
{
    D3DXVECTOR3 position;
    D3DXVECTOR3 normal;
    D3DXVECTOR2 texCoord;
};

/// Returns a multiple of 1/16 below 1. Different ones differ in more than the lowest 8 bits, by which welding tolerates
/// differences.
float Coarse(Random& random, std::uint32_t steps) { return static_cast<float>(random.Below(steps)) / 16; }

/// Returns triangles with corners of their own, of which many are equal.
Geometry RandomSoup(std::uint32_t seed)
{
    Random random(seed);
    const std::uint32_t corners = 3 * (1 + random.Below(2000));
    const std::uint32_t steps = 2 + random.Below(15);
    Geometry mesh;
    for (std::uint32_t corner = 0; corner < corners; ++corner)
    {
        Vertex vertex(Coarse(random, steps), Coarse(random, steps), Coarse(random, 3));
        vertex.SetNormal(D3DXVECTOR3(0, Coarse(random, 2), 1));
        vertex.SetTexCoord({Coarse(random, 2), 0.5F}, 0);
        mesh.VertexArray.push_back(vertex);
        mesh.IndexArray.push_back(corner);
    }
    return mesh;
}

std::vector<PlainVertex> PlainVerticesOf(Geometry& mesh)
{
    std::vector<PlainVertex> vertices;
    for (Vertex& vertex : mesh.VertexArray)
        vertices.push_back({vertex.GetPosition(), vertex.GetNormal(), vertex.GetTexCoord(0)});
    return vertices;
}

class WeldAgainstMeshoptimizerTest : public testing::TestWithParam<std::uint32_t>
{};

TEST_P(WeldAgainstMeshoptimizerTest, LeavesTheSameVertices)
{
    Geometry mesh = RandomSoup(GetParam());
    const std::vector<PlainVertex> vertices = PlainVerticesOf(mesh);
    std::vector<unsigned> remap(vertices.size());
    const std::size_t expected =
        meshopt_generateVertexRemap(remap.data(), mesh.IndexArray.data(), mesh.IndexArray.size(), vertices.data(),
                                    vertices.size(), sizeof(PlainVertex));
    Pipeline::WeldMesh(mesh);
    EXPECT_EQ(mesh.VertexArray.size(), expected);
    std::map<unsigned, std::uint32_t> partner;  // by the number that meshoptimizer gives a vertex
    for (std::size_t corner = 0; corner < mesh.IndexArray.size(); ++corner)
    {
        const auto [found, isNew] = partner.emplace(remap[corner], mesh.IndexArray[corner]);
        ASSERT_EQ(found->second, mesh.IndexArray[corner]) << "corner " << corner;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WeldAgainstMeshoptimizerTest, testing::Range(0U, 50U));

}  // namespace
