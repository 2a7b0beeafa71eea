#include <pipeline/steps/MissingNormals.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <pipeline/scene/HasNormals.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using Importing::Geometry;
using PipelineTests::TestScene;

Geometry WithoutNormals(Geometry mesh)
{
    for (Importing::Vertex& vertex : mesh.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    return mesh;
}

TEST(MissingNormals, AreComputedForMeshesWithoutNormals)
{
    TestScene scene("Root( A[a] B[b] C[c] )");
    std::vector<Geometry>& meshes = scene.container.GeometryLibrary;
    meshes[0] = WithoutNormals(Support::UnindexedGrid(2, 1));
    meshes[1] = Support::Triangle(D3DXVECTOR3(1, 0, 0));
    meshes[2] = WithoutNormals(Support::Quad());
    scene.supplement.pinnedMeshes = {false, false, true};
    Changes changes;
    ComputeMissingNormals(scene, {}, changes);
    EXPECT_EQ(changes, (Changes{{"meshes without normals got computed ones", 1}}));
    EXPECT_EQ(meshes[0].VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1));
    EXPECT_EQ(meshes[0].VertexArray.size(), 12U);
    EXPECT_EQ(meshes[1].VertexArray[0].GetNormal(), D3DXVECTOR3(1, 0, 0));
    EXPECT_FALSE(HasNormals(meshes[2]));
    ComputeMissingNormals(scene, {}, changes);
    EXPECT_EQ(changes.size(), 1U);
}

TEST(MissingNormals, AreComputedAfterWeldingIfItIsChosen)
{
    TestScene scene("Root[a]");
    scene.container.GeometryLibrary[0] = WithoutNormals(Support::UnindexedGrid(2, 1));
    Changes changes;
    ComputeMissingNormals(scene, {.weld = true}, changes);
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray.size(), 6U);
}

TEST(MissingNormals, FlatNormalsAreThoseOfTheTriangles)
{
    Geometry wedge = WithoutNormals(Support::Wedge(90));
    const std::size_t corners = wedge.IndexArray.size();
    MakeFlatNormals(wedge);
    EXPECT_EQ(wedge.VertexArray.size(), corners);
    Geometry expected = Support::Wedge(90);
    for (std::size_t first = 0; first < corners; first += 3)
    {
        const auto position = [&](std::size_t i) {
            return wedge.VertexArray[wedge.IndexArray[first + i]].GetPosition();
        };
        for (std::size_t i = 0; i < 3; ++i)
        {
            EXPECT_EQ(position(i), expected.VertexArray[expected.IndexArray[first + i]].GetPosition());
            const D3DXVECTOR3 normal = wedge.VertexArray[wedge.IndexArray[first + i]].GetNormal();
            const D3DXVECTOR3 edge = position(1) - position(0);
            EXPECT_NEAR(normal.x * edge.x + normal.y * edge.y + normal.z * edge.z, 0, 1e-6);
            EXPECT_NEAR(normal.x * normal.x + normal.y * normal.y + normal.z * normal.z, 1, 1e-6);
        }
    }
}

}  // namespace
