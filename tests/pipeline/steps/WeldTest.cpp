#include <pipeline/steps/Weld.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <pipeline/steps/ComputeNormals.h>
#include <support/Meshes.h>

#include <vector>

namespace
{

using namespace Pipeline;
using Importing::Geometry;
using PipelineTests::SceneOf;
using PipelineTests::TestScene;

TEST(Weld, CountsTheVerticesThatItRemoves)
{
    TestScene scene = SceneOf(Support::UnindexedGrid(2, 1));  // 12 corners of 6 places
    EXPECT_EQ(Weld(scene), (Changes{{"vertices removed", 6}}));
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray.size(), 6U);
}

TEST(Weld, ReportsProgressByVertices)
{
    TestScene scene("Root( A[a=m] B[b=n] )");
    scene.container.GeometryLibrary[0] = Support::UnindexedGrid(1, 1);
    scene.container.GeometryLibrary[1] = Support::UnindexedGrid(3, 1);
    std::vector<double> parts;
    Weld(scene, {}, [&parts](double part) { parts.push_back(part); });
    EXPECT_EQ(parts, (std::vector<double>{0.25, 1}));
}

TEST(Weld, NormalsThatAreGoingToBeComputedDoNotKeepVerticesApart)
{
    Geometry faceted = Support::UnindexedGrid(1, 1);
    for (std::size_t v = 0; v < 3; ++v)
        faceted.VertexArray[v].SetNormal(D3DXVECTOR3(0, 1, 0));
    TestScene scene = SceneOf(faceted);
    Weld(scene, {.normals = true});
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray.size(), 4U);
    TestScene other = SceneOf(faceted);
    Weld(other);
    EXPECT_EQ(other.container.GeometryLibrary[0].VertexArray.size(), 6U);
}

TEST(Weld, PinnedMeshesAreSkipped)
{
    TestScene scene = SceneOf(Support::UnindexedGrid(2, 1));
    scene.supplement.pinnedMeshes = {true};
    EXPECT_EQ(Weld(scene), (Changes{{"vertices removed", 0}}));
}

TEST(Weld, EmptiedMeshesAreSkipped)
{
    TestScene scene = SceneOf({});
    EXPECT_EQ(Weld(scene), (Changes{{"vertices removed", 0}}));
}

TEST(Weld, ASoupWithoutNormalsKeepsItsDistinctPositions)
{
    Geometry soup = Support::UnindexedGrid(20, 20);
    for (Importing::Vertex& vertex : soup.VertexArray)
    {
        vertex = Importing::Vertex(vertex.GetPosition());
    }
    TestScene scene = SceneOf(soup);
    Weld(scene);
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray.size(), 21U * 21U);
    ComputeNormals(scene);
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray.size(), 21U * 21U) << "a plane has no hard edges";
}

}  // namespace
