#include <pipeline/scene/VertexLayouts.h>

#include <gtest/gtest.h>
#include <support/Meshes.h>

#include <vector>

namespace
{

using namespace Pipeline;
using Importing::Geometry;
using Importing::Vertex;

std::vector<float> SetsOf(Vertex& vertex)
{
    std::vector<float> values;
    for (int set = 0; set < static_cast<int>(vertex.GetTexCoordCount()); ++set)
    {
        values.push_back(vertex.GetTexCoord(set).x);
        values.push_back(vertex.GetTexCoord(set).y);
    }
    return values;
}

/// A vertex with the sets (1, 2), (3, 4), ...
Geometry MeshWithSets(int count)
{
    Geometry mesh;
    Vertex& vertex = mesh.VertexArray.emplace_back(7.0F, 8.0F, 9.0F);
    vertex.SetNormal(D3DXVECTOR3(0, 1, 0));
    for (int set = 0; set < count; ++set)
        vertex.SetTexCoord({static_cast<float>(2 * set + 1), static_cast<float>(2 * set + 2)},
                           static_cast<std::uint64_t>(set));
    vertex.AddWeight(3, 0.25F);
    return mesh;
}

TEST(VertexLayouts, AMissingCountIsTheLargestOfAnyVertex)
{
    Geometry mesh = MeshWithSets(2);
    mesh.VertexArray.emplace_back();
    SceneSupplement supplement;
    EXPECT_EQ(LayoutOf(supplement, 4, mesh), (VertexLayout{.texCoordSets = 2}));
    SetLayout(supplement, 4, {.texCoordSets = 1, .attributes = {{"_A", 1, 1}}});
    EXPECT_EQ(LayoutOf(supplement, 4, mesh).texCoordSets, 1);
    EXPECT_EQ(LayoutOf(supplement, 3, mesh).texCoordSets, 2);
}

TEST(VertexLayouts, AttributesAreAppendedAfterTheSetsInUse)
{
    VertexLayout layout{.texCoordSets = 2};
    AppendAttribute(layout, {.name = "COLOR_0", .components = 4});
    AppendAttribute(layout, {.name = "_A", .components = 3});
    AppendAttribute(layout, {.name = "_B", .components = 1});
    EXPECT_EQ(layout.attributes, (std::vector<VertexAttribute>{{"COLOR_0", 2, 4}, {"_A", 4, 3}, {"_B", 6, 1}}));
    EXPECT_EQ(FindAttribute(layout, "_A"), &layout.attributes[1]);
    EXPECT_EQ(FindAttribute(layout, "_C"), nullptr);
}

TEST(VertexLayouts, ChangedLayoutsMoveFillAndDropSets)
{
    Geometry mesh = MeshWithSets(5);
    const VertexLayout from{.texCoordSets = 1, .attributes = {{"TANGENT", 1, 4}, {"_A", 3, 3}}};
    const VertexLayout to{.texCoordSets = 2, .attributes = {{"_A", 2, 3}, {"COLOR_0", 4, 4}, {"_B", 6, 1}}};
    ChangeLayout(mesh, from, to);
    Vertex& vertex = mesh.VertexArray[0];
    EXPECT_EQ(SetsOf(vertex), (std::vector<float>{1, 2, 0, 0, 7, 8, 9, 10, 1, 1, 1, 1, 0, 0}));
    EXPECT_EQ(vertex.GetPosition(), D3DXVECTOR3(7, 8, 9));
    EXPECT_EQ(vertex.GetNormal(), D3DXVECTOR3(0, 1, 0));
    EXPECT_EQ(vertex.GetWeight(0), Vertex::Weight(3, 0.25F));
}

TEST(VertexLayouts, ALayoutMayShrink)
{
    Geometry mesh = MeshWithSets(3);
    ChangeLayout(mesh, {.texCoordSets = 1, .attributes = {{"TANGENT", 1, 4}}}, {.texCoordSets = 1});
    EXPECT_EQ(SetsOf(mesh.VertexArray[0]), (std::vector<float>{1, 2}));
}

}  // namespace
