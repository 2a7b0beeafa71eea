#include <pipeline/steps/Facing.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::NodeNamed;
using Support::Scene;

TEST(Facing, WorldMatricesMirrorWhereAnOddNumberOfLocalOnesDoes)
{
    SceneContainer scene = Scene("Root( A( B ) C )");
    scene.NodeLibrary[0].SetLocalTransform(Support::Scaling(1, 1, -1));
    NodeNamed(scene, "B").SetLocalTransform(Support::Scaling(-1, 1, 1));
    EXPECT_EQ(FindMirroredNodes(scene, WalkFromRoot(scene)), (std::vector<bool>{true, true, false, true}));
}

TEST(Facing, FlipsTheMeshesOfMarkedNodes)
{
    SceneContainer scene = Scene("Root( A[a] B[b] )");
    const WindingRecord winding(scene);
    FlipFacesOfNodes(scene, WalkFromRoot(scene), {false, true, false});
    EXPECT_TRUE(winding.IsFlipped(scene, 0));
    EXPECT_FALSE(winding.IsFlipped(scene, 1));
    EXPECT_EQ(winding.CountFlipped(scene), 1U);
    FlipFacesOfNodes(scene, WalkFromRoot(scene), {false, true, true});
    EXPECT_FALSE(winding.IsFlipped(scene, 0));
    EXPECT_TRUE(winding.IsFlipped(scene, 1));
}

TEST(Facing, TrianglesWithEqualCornersAreSkipped)
{
    SceneContainer scene = Scene("Root[a]");
    scene.GeometryLibrary[0].IndexArray = {0, 1, 1, 0, 1, 2};
    const WindingRecord winding(scene);
    scene.GeometryLibrary[0].FlipFaces();
    EXPECT_TRUE(winding.IsFlipped(scene, 0));
}

TEST(Facing, MeshesWithoutAUsableTriangleCountAsNotFlipped)
{
    SceneContainer scene = Scene("Root[a]");
    scene.GeometryLibrary[0].IndexArray = {0, 1, 1};
    const WindingRecord winding(scene);
    scene.GeometryLibrary[0].FlipFaces();
    EXPECT_FALSE(winding.IsFlipped(scene, 0));
}

}  // namespace
