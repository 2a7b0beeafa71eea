#include <pipeline/steps/OrientationSteps.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/scene/Hierarchy.h>
#include <support/SceneText.h>

#include <vector>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using SceneprepTests::ExpectSameWorld;
using Support::NodeNamed;
using Support::Product;
using Support::Scaling;
using Support::Scene;
using Support::Translation;

Changes Repaired(std::size_t repaired, std::size_t left)
{
    return {{"mirrored nodes repaired", repaired}, {"mirrored nodes left as they are", left}};
}

/// A quarter turn about z.
D3DXMATRIX Turn() { return {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

bool IsMirrored(SceneContainer& scene, const char* node)
{
    return IsMirroring(NodeNamed(scene, node).GetLocalTransform().GetMatrix());
}

TEST(OrientationSteps, MirroringMovesFromTheNodesIntoTheMeshes)
{
    SceneContainer scene = Scene("Root( A@3,0,0[a]( B@0,2,0[b] ) C[c] )");
    NodeNamed(scene, "A").SetLocalTransform(Product(Scaling(1, -2, 1), Translation(3, 0, 0)));
    const WorldMeasure before = Measure(scene);
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 0));
    EXPECT_FALSE(IsMirrored(scene, "A"));
    EXPECT_FALSE(IsMirrored(scene, "B"));
    ExpectSameWorld(Measure(scene), before);
    EXPECT_EQ(RepairMirrors(scene), Repaired(0, 0));
}

TEST(OrientationSteps, AMirroredNodeBelowAMirroredOneKeepsItsPlace)
{
    SceneContainer scene = Scene("Root( A[a]( B[b]( C@1,0,0[c] ) ) )");
    NodeNamed(scene, "A").SetLocalTransform(Product(Scaling(-1, 1, 1), Translation(5, 0, 0)));
    NodeNamed(scene, "B").SetLocalTransform(Product(Product(Scaling(1, -1, 1), Turn()), Translation(0, 7, 0)));
    const WorldMeasure before = Measure(scene);
    EXPECT_EQ(RepairMirrors(scene), Repaired(2, 0));
    EXPECT_FALSE(IsMirrored(scene, "A"));
    EXPECT_FALSE(IsMirrored(scene, "B"));
    ExpectSameWorld(Measure(scene), before);
}

TEST(OrientationSteps, CamerasAndLightsKeepTheirPlaces)
{
    SceneContainer scene = Scene("Root( A@3,0,0( B@2,0,0{eye}<sun> ) )");
    NodeNamed(scene, "A").SetLocalTransform(Scaling(-1, 1, 1));
    scene.CameraLibrary[0].SetOffsetMatrix(Importing::Transform(Translation(0.5F, 0, 0)));
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 0));
    const D3DXMATRIX world = scene.CalculateGlobalTM(Support::NodeIndex(scene, "B"));
    EXPECT_FLOAT_EQ(Product(scene.CameraLibrary[0].GetOffsetMatrix().GetMatrix(), world)._41, -2.5F);
    EXPECT_FLOAT_EQ(Product(scene.LightLibrary[0].GetOffsetMatrix().GetMatrix(), world)._41, -2);
}

TEST(OrientationSteps, ObjectsOfOtherNodesAreLeftAlone)
{
    SceneContainer scene = Scene("Root( A B@2,0,0{eye} )");
    NodeNamed(scene, "A").SetLocalTransform(Scaling(-1, 1, 1));
    RepairMirrors(scene);
    EXPECT_EQ(scene.CameraLibrary[0].GetOffsetMatrix().GetMatrix()._11, 1);
}

TEST(OrientationSteps, SkinnedMeshesAndJointsAreLeftMirrored)
{
    SceneContainer scene = Scene("Root( A( Hip ) B[b] C[c] )");
    for (const char* node : {"A", "B", "C"})
        NodeNamed(scene, node).SetLocalTransform(Scaling(-1, 1, 1));
    scene.GeometryLibrary[0].JointArray.emplace_back(std::string("Hip"));
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 2));
    EXPECT_TRUE(IsMirrored(scene, "A")) << "above a joint";
    EXPECT_TRUE(IsMirrored(scene, "B")) << "shows a skinned mesh";
    EXPECT_FALSE(IsMirrored(scene, "C"));
}

TEST(OrientationSteps, BranchesThatMoveAreLeftMirrored)
{
    SceneContainer scene = Scene("Root( A( B*[b] ) C*[c] D[d] )");
    for (const char* node : {"A", "C", "D"})
        NodeNamed(scene, node).SetLocalTransform(Scaling(-1, 1, 1));
    const WorldMeasure before = Measure(scene);
    EXPECT_EQ(RepairMirrors(scene), Repaired(1, 2));
    EXPECT_TRUE(IsMirrored(scene, "A"));
    EXPECT_TRUE(IsMirrored(scene, "C"));
    ExpectSameWorld(Measure(scene), before);
}

TEST(OrientationSteps, AMirrorThatCannotBeTakenApartIsLeft)
{
    D3DXMATRIX skew = Scaling(-1, 1, 1);
    skew._21 = 0.5F;
    SceneContainer scene = Scene("Root( A[a] )");
    NodeNamed(scene, "A").SetLocalTransform(skew);
    const WorldMeasure before = Measure(scene);
    EXPECT_EQ(RepairMirrors(scene), Repaired(0, 1));
    EXPECT_TRUE(IsMirrored(scene, "A"));
    ExpectSameWorld(Measure(scene), before);
}

TEST(OrientationSteps, RepairKeepsFacesThatDisagreeWithTheirNormals)
{
    SceneContainer scene = Scene("Root( A[a] )");
    NodeNamed(scene, "A").SetLocalTransform(Scaling(-1, 1, 1));
    scene.GeometryLibrary[0].FlipFaces();
    const WorldMeasure before = Measure(scene);
    EXPECT_LT(before.volume, 0);
    RepairMirrors(scene);
    ExpectSameWorld(Measure(scene), before);
}

TEST(OrientationSteps, CheckTurnsMeshesThatLookAgainstTheirNormals)
{
    SceneContainer scene = Scene("Root( A[a] B[b] )");
    scene.GeometryLibrary[1].FlipFaces();
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes turned", 1}}));
    EXPECT_NEAR(Measure(scene).volume, 2, 1e-5);
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes turned", 0}}));
}

TEST(OrientationSteps, CheckJudgesMirroredMeshesAsViewersShowThem)
{
    SceneContainer scene = Scene("Root( A[a] B[b] )");
    NodeNamed(scene, "A").SetLocalTransform(Scaling(-1, 1, 1));
    NodeNamed(scene, "B").SetLocalTransform(Scaling(-1, 1, 1));
    scene.GeometryLibrary[1].FlipFaces();
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes turned", 1}}));
    EXPECT_NEAR(Measure(scene).volume, 2, 1e-5);
}

TEST(OrientationSteps, AnEmptySceneHasNothingToTurn)
{
    SceneContainer scene;
    EXPECT_EQ(CheckOrientation(scene), (Changes{{"meshes turned", 0}}));
    EXPECT_EQ(RepairMirrors(scene), Repaired(0, 0));
}

TEST(OrientationSteps, RepairingTellsItsPartByTheNodesThatAreDone)
{
    SceneContainer scene = Scene("Root( A[a]( B[b] ) C[c] )");
    std::vector<double> parts;
    RepairMirrors(scene, [&parts](double part) { parts.push_back(part); });
    EXPECT_EQ(parts, (std::vector<double>{0.25, 0.5, 0.75, 1}));
}

}  // namespace
