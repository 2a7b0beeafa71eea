#include <pipeline/steps/FlattenSteps.h>
#include <sceneprep/run/Progress.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <support/SceneText.h>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Importing::SceneContainer;
using SceneprepTests::ExpectSameWorld;
using SceneprepTests::Measure;
using Support::Scene;
using Support::ToText;

void RunFlatten(SceneContainer& scene, bool ignoreAnimation)
{
    StepSequence pipeline;
    AddFlattenSteps(pipeline, {.minSurfaces = 2, .maxVertices = -1, .ignoreAnimation = ignoreAnimation});
    std::ostringstream out;
    Progress progress(out, false);
    pipeline.Run(scene, progress);
}

TEST(FlattenSteps, NothingRemainsOfAStaticHierarchyButTheRoot)
{
    SceneContainer scene = Scene("Root@5,0,0( P@1,0,0( Q( R@0,1,0( S[a=m:c] ) ) ) T[b=n:c] )");
    const auto before = Measure(scene);
    RunFlatten(scene, false);
    EXPECT_EQ(ToText(scene), "Root[a]");
    EXPECT_EQ(scene.NodeLibrary.size(), 1U);
    ExpectSameWorld(Measure(scene), before);
}

TEST(FlattenSteps, AnimatedNodesKeepTheirPlaceInTheWorld)
{
    SceneContainer scene = Scene("Root@5,0,0( P@1,0,0( Q@0,3,0( X@0,0,1*( Y[a] ) Z[b] ) ) )");
    const auto before = Measure(scene);
    RunFlatten(scene, false);
    EXPECT_EQ(ToText(scene), "Root[b]( Q( X*( Y[a] ) ) )");
    ExpectSameWorld(Measure(scene), before);
}

TEST(FlattenSteps, AnimatedSiblingsShareAnAnchorAndChildrenOfTheRootNeedNone)
{
    SceneContainer scene = Scene("Root( A*[a] P@1,0,0( B*[b] C D*[d] ) )");
    AnchorAnimatedNodes(scene);
    EXPECT_EQ(scene.NodeLibrary.size(), 7U);
    const Importing::Node& anchor = scene.NodeLibrary.back();
    EXPECT_EQ(anchor.ChildList.size(), 2U);
    EXPECT_EQ(anchor.GetAnimationID(), static_cast<int>(scene.AnimationLibrary.size()));
    ReleaseAnchors(scene);
    EXPECT_EQ(ToText(scene), "Root( A*[a] P( C ) P( B*[b] D*[d] ) )");
}

TEST(FlattenSteps, IgnoredAnimationCollapsesEverything)
{
    SceneContainer scene = Scene("Root( P@1,0,0( X@0,0,1*( Y[a] ) ) )");
    const auto before = Measure(scene);
    RunFlatten(scene, true);
    EXPECT_EQ(ToText(scene), "Root[a]");
    ExpectSameWorld(Measure(scene), before);
}

TEST(FlattenSteps, FacesOfMirroredNodesLookTheSameWayAfterwards)
{
    SceneContainer scene = Scene("Root( P( A[a] ) B[b] )");
    Support::NodeNamed(scene, "P").SetLocalTransform(Support::Scaling(1, -1, 1));
    const auto before = Measure(scene);
    RunFlatten(scene, false);
    EXPECT_EQ(scene.NodeLibrary.size(), 1U);
    ExpectSameWorld(Measure(scene), before);  // the signed volume tells the sides of faces apart
    EXPECT_GT(before.volume, 1.9);
}

TEST(FlattenSteps, FacesBelowAnimatedNodesAreLeftAlone)
{
    SceneContainer scene = Scene("Root( P*( A[a] ) )");
    Support::NodeNamed(scene, "P").SetLocalTransform(Support::Scaling(1, -1, 1));
    const auto indices = scene.GeometryLibrary[0].IndexArray;
    TurnMirroredFaces(scene, false);
    EXPECT_EQ(scene.GeometryLibrary[0].IndexArray, indices);
    TurnMirroredFaces(scene, true);
    EXPECT_NE(scene.GeometryLibrary[0].IndexArray, indices);
}

TEST(FlattenSteps, AnEmptySceneStaysEmpty)
{
    SceneContainer scene;
    RunFlatten(scene, false);
    EXPECT_TRUE(scene.NodeLibrary.empty());
    EXPECT_EQ(scene.GetRootNodeIndex(), -1);
}

TEST(FlattenSteps, SkinnedMeshesAreNeitherCarriedNorMerged)
{
    for (const char* text : {"Root( P@1,0,0( A@0,2,0[a] B[b c d] ) )", "Root*[a b]( C[c] D[d] )"})
    {
        SceneContainer scene = Scene(text);
        for (const char* surface : {"a", "b"})
            Support::MeshOf(scene, surface).JointArray.resize(2);
        const auto before = Measure(scene);
        RunFlatten(scene, false);
        EXPECT_EQ(Support::MeshOf(scene, "a").VertexArray.size(), 8U);
        EXPECT_EQ(Support::MeshOf(scene, "b").VertexArray.size(), 8U);
        EXPECT_EQ(Support::MeshOf(scene, "b").JointArray.size(), 2U);
        ExpectSameWorld(Measure(scene), before);
    }
    SceneContainer scene = Scene("Root( P@1,0,0*( A@0,2,0[a] ) B[b] )");
    for (const char* surface : {"a", "b"})
        Support::MeshOf(scene, surface).JointArray.resize(2);
    RunFlatten(scene, false);
    EXPECT_EQ(ToText(scene), "Root( P*( A[a] ) B[b] )") << "what moves stays where it is";
    RunFlatten(scene, true);
    EXPECT_EQ(ToText(scene), "Root( A[a] B[b] )");
}

TEST(FlattenSteps, StepsStandInTheirOrder)
{
    StepSequence all;
    AddFlattenSteps(all, {});
    EXPECT_EQ(all.StepNames(),
              (std::vector<std::string>{"Drop skeleton nodes", "Set skins aside", "Anchor animated nodes",
                                        "Turn mirrored faces", "Flatten", "Release anchors", "Put skins back",
                                        "Drop unreachable nodes"}));
    StepSequence fewer;
    AddFlattenSteps(fewer, {.minSurfaces = 2, .maxVertices = -1, .ignoreAnimation = true});
    EXPECT_EQ(fewer.StepNames(), (std::vector<std::string>{"Set skins aside", "Turn mirrored faces", "Flatten",
                                                           "Put skins back", "Drop unreachable nodes"}));
}

}  // namespace
