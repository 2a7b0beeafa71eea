#include <pipeline/steps/ProbeScene.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;
using Support::Translation;

TEST(ProbeScene, CopiesABranch)
{
    SceneContainer scene = Scene("Root( A( B C( D ) ) E )");
    const NodeWalk walk = WalkFromRoot(scene);
    ProbeScene probe(scene, walk, 1);
    EXPECT_EQ(probe.Scene().NodeLibrary.size(), 4U);
    EXPECT_EQ(probe.Scene().NodeLibrary[0].ChildList, (std::vector<std::int32_t>{1, 2}));
    EXPECT_EQ(probe.Scene().NodeLibrary[2].ChildList, (std::vector<std::int32_t>{3}));
    EXPECT_TRUE(probe.HasInitialPositions());
    EXPECT_EQ(ProbeScene(scene, walk, 0).Scene().NodeLibrary.size(), 6U);
}

TEST(ProbeScene, DetectsMovedMeshes)
{
    SceneContainer scene = Scene("Root( A@100,0,0( B ) )");
    ProbeScene probe(scene, WalkFromRoot(scene), 0);
    probe.Scene().NodeLibrary[2].SetLocalTransform(Translation(0, 0.001F, 0));
    EXPECT_TRUE(probe.HasInitialPositions());
    probe.Scene().NodeLibrary[2].SetLocalTransform(Translation(0, 0.1F, 0));
    EXPECT_FALSE(probe.HasInitialPositions());
}

TEST(ProbeScene, AcceptsATransformThatMovesIntoTheMesh)
{
    SceneContainer scene = Scene("Root@3,0,0");
    ProbeScene probe(scene, WalkFromRoot(scene), 0);
    probe.Scene().NodeLibrary[0].SetLocalTransform(Translation(1, 0, 0));
    probe.Scene().GeometryLibrary[0].Transform(Translation(2, 0, 0));
    EXPECT_TRUE(probe.HasInitialPositions());
}

TEST(ProbeScene, ToleranceDependsOnTheSizeOfTheMesh)
{
    SceneContainer scene = Scene("Root@10000,0,0( A )");
    Support::NodeNamed(scene, "A").SetLocalTransform(Support::Scaling(0.125F, 0.125F, 0.125F));
    ProbeScene probe(scene, WalkFromRoot(scene), 0);
    probe.Scene().NodeLibrary[1].SetLocalTransform(Support::Scaling(0.25F, 0.125F, 0.125F));
    EXPECT_FALSE(probe.HasInitialPositions());
}

}  // namespace
