#include <pipeline/steps/ComputeNormals.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using PipelineTests::SceneOf;
using PipelineTests::TestScene;

TEST(ComputeNormals, CountsTheSplitVertices)
{
    TestScene scene = SceneOf(Support::Wedge(90));
    EXPECT_EQ(ComputeNormals(scene), (Changes{{"vertices split", 2}}));
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray[0].GetNormal(), D3DXVECTOR3(0, 0, 1));
}

}  // namespace
