#include <pipeline/steps/CheckOrientation.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <pipeline/scene/WorldMeasure.h>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;
using Support::NodeNamed;
using Support::Scaling;

TEST(CheckOrientation, FlipsMeshesThatFaceAgainstTheirNormals)
{
    TestScene scene("Root( A[a] B[b] )");
    scene.container.GeometryLibrary[1].FlipFaces();
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 1}}));
    EXPECT_NEAR(Measure(scene.container).volume, 2, 1e-5);
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 0}}));
}

TEST(CheckOrientation, JudgesMirroredMeshesAsViewersShowThem)
{
    TestScene scene("Root( A[a] B[b] )");
    NodeNamed(scene.container, "A").SetLocalTransform(Scaling(-1, 1, 1));
    NodeNamed(scene.container, "B").SetLocalTransform(Scaling(-1, 1, 1));
    scene.container.GeometryLibrary[1].FlipFaces();
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 1}}));
    EXPECT_NEAR(Measure(scene.container).volume, 2, 1e-5);
}

TEST(CheckOrientation, AnEmptySceneDoesNotChange)
{
    TestScene scene(Importing::SceneContainer{});
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 0}}));
}

TEST(CheckOrientation, PinnedMeshesAreSkipped)
{
    TestScene scene("Root( A[a] B[b] )");
    scene.container.GeometryLibrary[0].FlipFaces();
    const auto before = scene.container.GeometryLibrary[0].IndexArray;
    scene.supplement.pinnedMeshes = {true};
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 0}}));
    EXPECT_EQ(scene.container.GeometryLibrary[0].IndexArray, before);
}

TEST(CheckOrientation, ASharedMeshIsFlippedOnceForAllItsSurfaces)
{
    TestScene scene("Root( A[a=m] B[b=m] C[c=m] )");
    NodeNamed(scene.container, "B").SetLocalTransform(Scaling(-1, 1, 1));
    scene.container.GeometryLibrary[0].FlipFaces();
    scene.supplement.sharedMeshes = {true};
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 1}}));
    EXPECT_NEAR(Measure(scene.container).volume, 3, 1e-5);
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 0}}));
}

TEST(CheckOrientation, SurfacesWithoutATriangleAreSkipped)
{
    TestScene scene("Root( A[a b] )");
    scene.container.GeometryLibrary[0].IndexArray.clear();
    scene.container.SurfaceLibrary[1].SetGeometryID(-1);
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes flipped", 0}}));
    EXPECT_EQ(Support::ToText(scene.container), "Root( A[a b] )");
}

}  // namespace
