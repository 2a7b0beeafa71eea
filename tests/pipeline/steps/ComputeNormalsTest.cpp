#include <pipeline/steps/ComputeNormals.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using Importing::Geometry;
using PipelineTests::TestScene;

/// A mesh that two surfaces show: a step takes it once.
TestScene SceneOf(const Geometry& mesh)
{
    TestScene scene("Root( A[a=m] B[b=m] )");
    scene.container.GeometryLibrary[0] = mesh;
    return scene;
}

TEST(ComputeNormals, CountsTheSplitVertices)
{
    TestScene scene = SceneOf(Support::Wedge(90));
    EXPECT_EQ(ComputeNormals(scene), (Changes{{"vertices split", 2}}));
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1));
}

}  // namespace
