#include <pipeline/steps/UnifyNormals.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using PipelineTests::SceneOf;
using PipelineTests::TestScene;

TEST(UnifyNormals, CountsTheFlippedNormals)
{
    TestScene scene = SceneOf(Support::Triangle(D3DXVECTOR3(0, 0, -1)));
    EXPECT_EQ(UnifyNormals(scene), (Changes{{"normals flipped", 3}}));
    EXPECT_EQ(scene.container.GeometryLibrary[0].VertexArray[1].GetNormal(), D3DXVECTOR3(0, 0, 1));
}

}  // namespace
