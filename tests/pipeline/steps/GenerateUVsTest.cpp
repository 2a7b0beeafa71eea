#include <pipeline/steps/GenerateUVs.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;

TEST(GenerateUVs, FillsTheSetsOfEveryMesh)
{
    TestScene scene("Root( A[a] B[b] )");
    scene.container.GeometryLibrary[0] = Support::Quad();
    EXPECT_EQ(GenerateUVs(scene, {.uvs = {{"planar-z", 1, false}, {"cubic", 0, false}}}),
              (Changes{{"UV sets generated", 4}}));
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray[0].GetTexCoord(1).x, 0);
    for (const Importing::Geometry& mesh : scene.container.GeometryLibrary)
        EXPECT_EQ(mesh.VertexArray[0].GetTexCoordCount(), 2U);
}

TEST(GenerateUVs, MappingsAreAddedToTheOptions)
{
    PrepareOptions options;
    EXPECT_EQ(AddUVMapping(options, "cubic:1:world"), "");
    EXPECT_EQ(options.uvs, (std::vector<UVMapping>{{"cubic", 1, true}}));
    EXPECT_EQ(AddUVMapping(options, "conical"),
              "'conical' is not a mapping; allowed are planar-x, planar-y, planar-z, cubic, cylindrical or spherical, "
              "optionally followed by :SET from 0 to 7, optionally followed by :world");
    EXPECT_EQ(AddUVMapping(options, "planar-x:1"), "set 1 is generated twice; give each mapping a set of its own");
    EXPECT_EQ(options.uvs.size(), 1U);
}

TEST(GenerateUVs, AttributesMakeRoomForNewSets)
{
    TestScene scene("Root[a]");
    Importing::Geometry& mesh = scene.container.GeometryLibrary[0];
    for (Importing::Vertex& vertex : mesh.VertexArray)
    {
        vertex.SetTexCoord({3, 4}, 1);
        vertex.SetTexCoord({5, 6}, 2);
    }
    scene.supplement.layouts = {{.texCoordSets = 1, .attributes = {{"COLOR_0", 1, 4}}}};
    GenerateUVs(scene, {.uvs = {{"planar-z", 0, false}}});
    EXPECT_EQ(scene.supplement.layouts[0].attributes[0].firstSet, 1);
    GenerateUVs(scene, {.uvs = {{"planar-z", 1, false}}});
    EXPECT_EQ(scene.supplement.layouts[0], (VertexLayout{.texCoordSets = 2, .attributes = {{"COLOR_0", 2, 4}}}));
    EXPECT_EQ(mesh.VertexArray[0].GetTexCoord(2), D3DXVECTOR2(3, 4));
    EXPECT_EQ(mesh.VertexArray[0].GetTexCoord(3), D3DXVECTOR2(5, 6));
    EXPECT_NE(mesh.VertexArray[0].GetTexCoord(1), D3DXVECTOR2(3, 4));
}

}  // namespace
