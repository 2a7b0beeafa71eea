#include <pipeline/scene/Skeletons.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::Geometry;
using Importing::Joint;
using Importing::SceneContainer;
using testing::ElementsAre;

struct JointText
{
    const char* name;
    int parent;
    D3DXMATRIX local;
};

void SetJoints(Geometry& geometry, const std::vector<JointText>& joints)
{
    geometry.JointArray.clear();
    for (const JointText& text : joints)
    {
        Joint& joint = geometry.JointArray.emplace_back(std::string(text.name));
        joint.SetParentID(text.parent);
        joint.SetLocalTM(text.local);
    }
}

std::vector<int> FindIn(SceneContainer& scene, const std::string& surface, const std::string& node)
{
    const NodeWalk walk = WalkFromRoot(scene);
    return Skeletons(scene, walk).Find(Support::MeshOf(scene, surface), Support::NodeIndex(scene, node));
}

D3DXMATRIX At(float x, float y, float z) { return Support::Translation(x, y, z); }

TEST(Skeletons, JointsAreNodesOfTheSameNameAndTransform)
{
    SceneContainer scene = Support::Scene("Root@9,0,0( Hip@1,0,0( Leg@0,2,0 ) M@0,0,5[m] )");
    SetJoints(Support::MeshOf(scene, "m"), {{"Leg", 1, At(0, 2, 0)}, {"Hip", -1, At(1, 0, -5)}});
    EXPECT_THAT(FindIn(scene, "m", "M"), ElementsAre(2, 1));
}

TEST(Skeletons, AJointWithoutAMatchingNodeGetsANewNode)
{
    SceneContainer scene = Support::Scene("Root( Hip@1,0,0( Leg@0,2,0 ) M[m] )");
    SetJoints(Support::MeshOf(scene, "m"),
              {{"Hip", -1, At(1, 0, 0)}, {"Leg", 0, At(0, 3, 0)}, {"Foot", 1, At(0, 0, 0)}});
    const NodeWalk walk = WalkFromRoot(scene);
    Skeletons skeletons(scene, walk);
    EXPECT_THAT(skeletons.Find(Support::MeshOf(scene, "m"), 3), ElementsAre(1, 4, 5));
    ASSERT_EQ(skeletons.JointNodes().size(), 2U);
    EXPECT_EQ(skeletons.JointNodes()[0].name, "Leg");
    EXPECT_EQ(skeletons.JointNodes()[0].parent, 1);
    EXPECT_EQ(skeletons.JointNodes()[1].parent, 4);
    EXPECT_EQ(skeletons.JointNodes()[0].local._42, 3);
}

TEST(Skeletons, JointAndNodeHaveTheSameAnimation)
{
    SceneContainer scene = Support::Scene("Root( Hip@1,0,0* M[m] )");
    SetJoints(Support::MeshOf(scene, "m"), {{"Hip", -1, At(1, 0, 0)}});
    EXPECT_THAT(FindIn(scene, "m", "M"), ElementsAre(3)) << "the node moves, the joint does not";
    Support::MeshOf(scene, "m").JointArray[0].SetAnimationID(0);
    EXPECT_THAT(FindIn(scene, "m", "M"), ElementsAre(1));
}

TEST(Skeletons, AnimatedJointsHaveTheSameParentTransform)
{
    SceneContainer scene = Support::Scene("Root( Hip@3,0,0* M@1,0,0[m] )");
    SetJoints(Support::MeshOf(scene, "m"), {{"Hip", -1, At(2, 0, 0)}});
    Support::MeshOf(scene, "m").JointArray[0].SetAnimationID(0);
    EXPECT_THAT(FindIn(scene, "m", "M"), ElementsAre(3)) << "the joint's keys place it in the mesh's frame";
}

TEST(Skeletons, JointAndNodeHaveTheSameAnimatedAncestor)
{
    SceneContainer scene = Support::Scene("Root( Walk*( Hip@1,0,0 M[m] ) N[n] )");
    SetJoints(Support::MeshOf(scene, "m"), {{"Hip", -1, At(1, 0, 0)}});
    SetJoints(Support::MeshOf(scene, "n"), {{"Hip", -1, At(1, 0, 0)}});
    EXPECT_THAT(FindIn(scene, "m", "M"), ElementsAre(2));
    EXPECT_THAT(FindIn(scene, "n", "N"), ElementsAre(5)) << "the node walks, the joint does not";
}

TEST(Skeletons, MeshesShareJointNodes)
{
    SceneContainer scene = Support::Scene("Root( M[m] N@0,1,0[n] )");
    SetJoints(Support::MeshOf(scene, "m"), {{"Hip", -1, At(1, 0, 0)}, {"Leg", 0, At(0, 2, 0)}});
    SetJoints(Support::MeshOf(scene, "n"),
              {{"Leg", 1, At(0, 2, 0)}, {"Hip", -1, At(1, -1, 0)}, {"Arm", 1, At(3, 0, 0)}});
    const NodeWalk walk = WalkFromRoot(scene);
    Skeletons skeletons(scene, walk);
    EXPECT_THAT(skeletons.Find(Support::MeshOf(scene, "m"), 1), ElementsAre(3, 4));
    EXPECT_THAT(skeletons.Find(Support::MeshOf(scene, "n"), 2), ElementsAre(4, 3, 5));
    EXPECT_EQ(skeletons.JointNodes().size(), 3U);
}

TEST(Skeletons, JointsOfOneMeshNeverShareANode)
{
    SceneContainer scene = Support::Scene("Root( Tip M[m] )");
    SetJoints(Support::MeshOf(scene, "m"), {{"Tip", -1, At(0, 0, 0)}, {"Tip", 0, At(0, 0, 0)}});
    EXPECT_THAT(FindIn(scene, "m", "M"), ElementsAre(1, 3));
}

TEST(Skeletons, JointsWithInvalidOrCyclicParentsAreRoots)
{
    Geometry geometry;
    SetJoints(geometry, {{"A", 0, At(0, 0, 0)}, {"B", 9, At(0, 0, 0)}, {"C", -7, At(0, 0, 0)}, {"D", 1, At(0, 0, 0)}});
    EXPECT_THAT(JointParents(geometry), ElementsAre(-1, -1, -1, 1));
    SetJoints(geometry, {{"A", 2, At(0, 0, 0)}, {"B", 0, At(0, 0, 0)}, {"C", 1, At(0, 0, 0)}});
    const std::vector<int> parents = JointParents(geometry);
    EXPECT_EQ(std::count(parents.begin(), parents.end(), -1), 1) << "a circle is cut once";
}

TEST(Skeletons, SkinnedMeshesAreListedAndTheirJointsMarked)
{
    SceneContainer scene = Support::Scene("Root( Hip@1,0,0 M[m other] ) | Lost[lost=m]");
    SetJoints(Support::MeshOf(scene, "m"), {{"Hip", -1, At(1, 0, 0)}});
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<SkinnedMesh> meshes = ListSkinnedMeshes(scene, walk);
    ASSERT_EQ(meshes.size(), 1U);
    EXPECT_EQ(meshes[0].node, 2);
    EXPECT_TRUE(IsSkinned(scene, 0));
    EXPECT_FALSE(IsSkinned(scene, 1));
    EXPECT_THAT(FindJointNodes(scene, walk), ElementsAre(false, true, false, false));
}

}  // namespace
