#include <sceneprep/model/MeshJoints.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/scene/Hierarchy.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Importing::Joint;
using Importing::SceneContainer;
using testing::ElementsAre;

/// Makes the joints of a mesh at a node. The bones are these nodes.
MeshJoints JointsOf(SceneContainer& scene, const std::vector<std::string>& nodes, const std::string& meshNode)
{
    std::vector<Bone> bones;
    bones.reserve(nodes.size());
    for (const std::string& name : nodes)
        bones.push_back({name, Support::Translation(0, 0, 8), Support::NodeIndex(scene, name)});
    return MakeJoints(scene, WalkFromRoot(scene).parent, bones, Support::NodeIndex(scene, meshNode));
}

/// Returns "Name<parent" for each joint.
std::vector<std::string> TextOf(std::vector<Joint> joints)
{
    std::vector<std::string> texts;
    texts.reserve(joints.size());
    for (Joint& joint : joints)
        texts.push_back(joint.GetName() + '<' + std::to_string(joint.GetParentID()));
    return texts;
}

D3DXVECTOR3 PlaceOf(Joint& joint)
{
    const D3DXMATRIX local = joint.GetLocalTM();
    return {local._41, local._42, local._43};
}

TEST(MeshJoints, TransformsOfNodesBetweenBonesAreMultiplied)
{
    SceneContainer scene = Support::Scene("Root( Arm@1,0,0( Between@0,2,0( Hand@0,0,3 ) ) M )");
    MeshJoints made = JointsOf(scene, {"Arm", "Hand"}, "M");
    EXPECT_THAT(TextOf(made.joints), ElementsAre("Arm<-1", "Hand<0"));
    EXPECT_EQ(PlaceOf(made.joints[1]), D3DXVECTOR3(0, 2, 3));
    EXPECT_TRUE(made.isPlaced);
}

TEST(MeshJoints, AnimatedNodesAboveBonesBecomeJointsAfterThem)
{
    SceneContainer scene = Support::Scene("Root( Walk*( Arm( Bend*( Hand ) ) ) M )");
    MeshJoints made = JointsOf(scene, {"Arm", "Hand"}, "M");
    EXPECT_THAT(TextOf(made.joints), ElementsAre("Arm<2", "Hand<3", "Walk<-1", "Bend<0"));
    EXPECT_EQ(made.joints[2].GetAnimationID(), Support::NodeNamed(scene, "Walk").GetAnimationID());
    EXPECT_EQ(made.joints[2].GetBindPoseInverse()._43, 0) << "no weight asks for it";
}

TEST(MeshJoints, AnimatedAncestorsOfTheMeshAreNotJoints)
{
    SceneContainer scene = Support::Scene("Root( Walk@1,0,0*( Arm@2,0,0 M@0,1,0 ) )");
    MeshJoints made = JointsOf(scene, {"Arm"}, "M");
    EXPECT_THAT(TextOf(made.joints), ElementsAre("Arm<-1"));
    EXPECT_EQ(PlaceOf(made.joints[0]), D3DXVECTOR3(2, -1, 0));
}

TEST(MeshJoints, TheParentOfAnAnimatedNodeIsAJointUnlessItEqualsTheMesh)
{
    SceneContainer scene = Support::Scene("Root( Figure@1,0,0( Arm* M ) N )");
    EXPECT_THAT(TextOf(JointsOf(scene, {"Arm"}, "M").joints), ElementsAre("Arm<-1"));
    MeshJoints made = JointsOf(scene, {"Arm"}, "N");
    EXPECT_THAT(TextOf(made.joints), ElementsAre("Arm<1", "Figure<-1"));
    EXPECT_EQ(PlaceOf(made.joints[1]), D3DXVECTOR3(1, 0, 0));
}

TEST(MeshJoints, AFrameIsTheParentOfAnimatedNodesOnly)
{
    SceneContainer scene = Support::Scene("Root( Figure@1,0,0( Arm* Leg@0,2,0 ) M )");
    MeshJoints made = JointsOf(scene, {"Arm", "Leg"}, "M");
    EXPECT_THAT(TextOf(made.joints), ElementsAre("Arm<2", "Leg<-1", "Figure<-1"));
    EXPECT_EQ(PlaceOf(made.joints[1]), D3DXVECTOR3(1, 2, 0));
}

TEST(MeshJoints, AFrameAboveTheMeshHasNoAnimation)
{
    SceneContainer scene = Support::Scene("Root( Walk@1,0,0*( Arm@2,0,0* P@0,1,0( M ) ) )");
    MeshJoints made = JointsOf(scene, {"Arm"}, "M");
    EXPECT_THAT(TextOf(made.joints), ElementsAre("Arm<1", "Walk<-1"));
    EXPECT_EQ(PlaceOf(made.joints[1]), D3DXVECTOR3(0, -1, 0));
    EXPECT_EQ(made.joints[1].GetAnimationID(), -1);
}

TEST(MeshJoints, TheMeshMayBeTheFrameBelowABoneToo)
{
    SceneContainer scene = Support::Scene("Root( Hip@1,0,0( M@0,1,0( Arm* ) ) )");
    EXPECT_THAT(TextOf(JointsOf(scene, {"Hip", "Arm"}, "M").joints), ElementsAre("Hip<-1", "Arm<-1"));
}

TEST(MeshJoints, ABoneWithTheTransformOfTheFrameIsReused)
{
    SceneContainer scene = Support::Scene("Root( Walk@1,0,0*( Arm@2,0,0* P@0,1,0( M( Frame@0,-1,0 ) ) ) )");
    EXPECT_THAT(TextOf(JointsOf(scene, {"Arm", "Frame"}, "M").joints), ElementsAre("Arm<1", "Frame<-1"));
}

TEST(MeshJoints, BonesAboveTheMeshMayBeParents)
{
    SceneContainer scene = Support::Scene("Root( Hip@1,0,0( Leg@0,2,0( M@0,0,3 ) Arm@5,0,0 ) )");
    MeshJoints made = JointsOf(scene, {"Arm", "Hip"}, "M");
    EXPECT_THAT(TextOf(made.joints), ElementsAre("Arm<1", "Hip<-1"));
    EXPECT_EQ(PlaceOf(made.joints[0]), D3DXVECTOR3(5, 0, 0));
    EXPECT_EQ(PlaceOf(made.joints[1]), D3DXVECTOR3(0, -2, -3));
}

TEST(MeshJoints, TheRootOfTheSceneMayBeABone)
{
    SceneContainer scene = Support::Scene("Root@1,0,0( M@0,2,0 )");
    MeshJoints made = JointsOf(scene, {"Root"}, "M");
    EXPECT_EQ(PlaceOf(made.joints.at(0)), D3DXVECTOR3(0, -2, 0));
}

TEST(MeshJoints, ABoneWithoutANodeKeepsItsBindPose)
{
    SceneContainer scene = Support::Scene("Root( M@5,0,0 )");
    MeshJoints made = MakeJoints(scene, WalkFromRoot(scene).parent, {{"Lost", Support::Translation(0, 0, 8), -1}}, 1);
    EXPECT_EQ(PlaceOf(made.joints.at(0)), D3DXVECTOR3(0, 0, -8));
    EXPECT_EQ(made.joints[0].GetParentID(), -1);
}

TEST(MeshJoints, TwoBonesMayBeOneNode)
{
    SceneContainer scene = Support::Scene("Root( Hip@1,0,0( Leg ) M )");
    EXPECT_THAT(TextOf(JointsOf(scene, {"Hip", "Hip", "Leg"}, "M").joints), ElementsAre("Hip<-1", "Hip<-1", "Leg<0"));
}

TEST(MeshJoints, ASingularMeshMatrixIsReported)
{
    SceneContainer scene = Support::Scene("Root( Hip M )");
    Support::NodeNamed(scene, "M").SetLocalTransform(Importing::Transform(Support::Scaling(1, 0, 1)));
    EXPECT_FALSE(JointsOf(scene, {"Hip"}, "M").isPlaced);
}

}  // namespace
