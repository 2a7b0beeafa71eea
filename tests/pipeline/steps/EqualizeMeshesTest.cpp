#include <pipeline/steps/EqualizeMeshes.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <pipeline/scene/HasNormals.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using Importing::Geometry;
using PipelineTests::TestScene;

const VertexLayout kTangents{.texCoordSets = 1, .attributes = {{"TANGENT", 1, 4}}};
const VertexLayout kColors{.texCoordSets = 2, .attributes = {{"COLOR_0", 2, 4}, {"_A", 4, 1}}};

TEST(EqualizeMeshes, MeshesOfOneMaterialGetOneLayout)
{
    TestScene scene("Root[a=m:c b=n:c d=o:e]");
    scene.supplement.layouts = {kTangents, kColors, kTangents};
    for (Geometry& mesh : scene.container.GeometryLibrary)
        for (Importing::Vertex& vertex : mesh.VertexArray)
            vertex.SetTexCoord({5, 6}, 4);
    const Equalized result = EqualizeMeshes(scene, {0, 1, 2}, {});
    EXPECT_EQ(result.droppedTangents, 1U);
    EXPECT_EQ(scene.supplement.layouts[0], kColors);
    EXPECT_EQ(scene.supplement.layouts[1], kColors);
    EXPECT_EQ(scene.supplement.layouts[2], kTangents) << "another material";
    Importing::Vertex& filled = scene.container.GeometryLibrary[0].VertexArray[0];
    EXPECT_EQ(filled.GetTexCoordCount(), 5U);
    EXPECT_EQ(filled.GetTexCoord(2), D3DXVECTOR2(1, 1));
    EXPECT_EQ(filled.GetTexCoord(3), D3DXVECTOR2(1, 1));
    EXPECT_EQ(filled.GetTexCoord(4), D3DXVECTOR2(0, 0));
    EXPECT_EQ(scene.container.GeometryLibrary[1].VertexArray[0].GetTexCoord(4), D3DXVECTOR2(5, 6));
}

TEST(EqualizeMeshes, TangentsOfAllMeshesStay)
{
    TestScene scene("Root[a=m:c b=n:c]");
    scene.supplement.layouts = {kTangents, kTangents};
    scene.supplement.layouts[1].texCoordSets = 2;
    scene.supplement.layouts[1].attributes[0].firstSet = 2;
    EXPECT_EQ(EqualizeMeshes(scene, {0, 1}, {}).droppedTangents, 0U);
    EXPECT_EQ(scene.supplement.layouts[0], scene.supplement.layouts[1]);
    EXPECT_EQ(scene.supplement.layouts[0].attributes[0].firstSet, 2);
}

TEST(EqualizeMeshes, MeshesThatAreNotMergedKeepTheirLayouts)
{
    TestScene scene("Root[a=m:c b=n:c]");
    scene.supplement.layouts = {kTangents, kColors};
    EqualizeMeshes(scene, {0, 1}, {.minSurfaces = 3});
    EXPECT_EQ(scene.supplement.layouts, (std::vector<VertexLayout>{kTangents, kColors}));
    EqualizeMeshes(scene, {0}, {});
    EXPECT_EQ(scene.supplement.layouts[0], kTangents);
}

TEST(EqualizeMeshes, MeshesWithoutNormalsGetFlatOnesIfOthersHaveNormals)
{
    TestScene scene("Root[a=m:c b=n:c d=o:e]");
    std::vector<Geometry>& meshes = scene.container.GeometryLibrary;
    for (const std::size_t mesh : {0U, 2U})
    {
        meshes[mesh] = Support::Grid(2, 2);
        for (Importing::Vertex& vertex : meshes[mesh].VertexArray)
            vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    }
    EXPECT_EQ(EqualizeMeshes(scene, {0, 1, 2}, {.weld = true}).flatNormals, 1U);
    EXPECT_EQ(meshes[0].VertexArray.size(), 9U) << "coplanar faces share their vertices again";
    for (Importing::Vertex& vertex : meshes[0].VertexArray)
        EXPECT_EQ(vertex.GetNormal(), D3DXVECTOR3(0, 0, 1));
    EXPECT_FALSE(HasNormals(meshes[2]));
}

}  // namespace
