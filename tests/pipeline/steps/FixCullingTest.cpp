#include <pipeline/steps/FixCulling.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <support/Meshes.h>

namespace
{

using namespace Pipeline;
using PipelineTests::SceneOf;
using PipelineTests::TestScene;

TEST(FixCulling, FlipsTrianglesThatTheirNormalsPointAgainst)
{
    TestScene scene = SceneOf(Support::Triangle(D3DXVECTOR3(0, 0, -1)));
    EXPECT_EQ(FixCulling(scene), (Changes{{"triangles flipped", 1}}));
    EXPECT_EQ(scene.container.GeometryLibrary[0].IndexArray, (std::vector<std::uint32_t>{0, 2, 1}));
    EXPECT_EQ(FixCulling(scene), (Changes{{"triangles flipped", 0}}));
}

TEST(FixCulling, PinnedMeshesAreSkipped)
{
    TestScene scene = SceneOf(Support::Triangle(D3DXVECTOR3(0, 0, -1)));
    scene.supplement.pinnedMeshes = {true};
    EXPECT_EQ(FixCulling(scene), (Changes{{"triangles flipped", 0}}));
}

}  // namespace
