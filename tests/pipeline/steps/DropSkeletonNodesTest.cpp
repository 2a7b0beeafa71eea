#include <pipeline/steps/DropSkeletonNodes.h>

#include <gtest/gtest.h>
#include <pipeline/TestScene.h>

namespace
{

using namespace Pipeline;
using Importing::Joint;
using Importing::SceneContainer;
using PipelineTests::TestScene;
using Support::ToText;

/// Gives the mesh of a surface a joint that is the node of its name, below the node that references the surface or a
/// sibling of it.
void AddJoint(SceneContainer& scene, const std::string& surface, const std::string& name, int parent = -1)
{
    const Importing::Node& node = Support::NodeNamed(scene, name);
    Joint& joint = Support::MeshOf(scene, surface).JointArray.emplace_back(name);
    joint.SetParentID(parent);
    joint.SetAnimationID(node.GetAnimationID());
    joint.SetLocalTM(Support::NodeNamed(scene, name).GetLocalTransform().GetMatrix());
}

TEST(DropSkeletonNodes, SkeletonsWithoutOtherContentAreDropped)
{
    TestScene scene("Root( Hip@1,0,0*( Leg@0,1,0*( Toe ) ) M[m] )");
    AddJoint(scene.container, "m", "Hip");
    AddJoint(scene.container, "m", "Leg", 0);
    EXPECT_EQ(DropSkeletonNodes(scene), 3U);
    EXPECT_EQ(ToText(scene.container), "Root( M[m] )");
    EXPECT_EQ(scene.container.NodeLibrary.size(), 2U);
}

TEST(DropSkeletonNodes, BonesWithContentAndOtherAnimatedNodesStay)
{
    TestScene scene("Root( Hip*( Hand*( Sword[s] ) Leg* Cape*( Hem ) ) Still M[m] )");
    AddJoint(scene.container, "m", "Hip");
    AddJoint(scene.container, "m", "Hand", 0);
    AddJoint(scene.container, "m", "Leg", 0);
    DropSkeletonNodes(scene);
    EXPECT_EQ(ToText(scene.container), "Root( Hip*( Hand*( Sword[s] ) Cape*( Hem ) ) Still M[m] )");
}

TEST(DropSkeletonNodes, WithoutSkinsNothingIsDropped)
{
    TestScene scene("Root( Hip*( Leg ) M[m] )");
    EXPECT_EQ(DropSkeletonNodes(scene), 0U);
    EXPECT_EQ(scene.container.NodeLibrary.size(), 4U);
}

TEST(DropSkeletonNodes, KeptNodesStayAndTheirEntriesFollow)
{
    TestScene scene("Root( Lost Hip( Leg ) Arm( Hand ) M[m] )");
    AddJoint(scene.container, "m", "Hip");
    AddJoint(scene.container, "m", "Arm");
    scene.supplement.keptNodes = {false, false, false, false, false, true};
    scene.supplement.nodeKeys = {10, 11, 12, 13, 14, 15, 16};
    EXPECT_EQ(DropSkeletonNodes(scene), 2U);
    EXPECT_EQ(ToText(scene.container), "Root( Lost Arm( Hand ) M[m] )");
    EXPECT_EQ(scene.supplement.nodeKeys, (std::vector<int>{10, 11, 14, 15, 16}));
    EXPECT_EQ(scene.supplement.keptNodes, (std::vector<bool>{false, false, false, true, false}));
}

}  // namespace
