#include <sceneprep/export/gltf/Skins.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>
#include <support/Meshes.h>
#include <support/SceneText.h>

#include <limits>

namespace
{

using Importing::Geometry;
using namespace Pipeline;
using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using SceneprepTests::ReadArray;
using testing::ElementsAre;

/// A root that two nodes hang from, both with a mesh of three joints.
class GltfSkins : public testing::Test
{
protected:
    GltfSkins()
    {
        model_.nodes.resize(3);
        for (const std::size_t mesh : {0U, 1U})
        {
            scene_.GeometryLibrary.at(mesh).SetName(mesh == 0 ? "Arm" : "Sleeve");
            for (const char* name : {"Shoulder", "Elbow", "Hand"})
                scene_.GeometryLibrary[mesh].JointArray.emplace_back(std::string(name));
        }
        SetParents({-1, 0, 1});
    }

    void SetParents(const std::vector<int>& parents)
    {
        for (Geometry& mesh : scene_.GeometryLibrary)
        {
            for (std::size_t j = 0; j < parents.size(); ++j)
                mesh.JointArray[j].SetParentID(parents[j]);
        }
    }

    int AddFirst()
    {
        writer_.Announce(0, 1);
        writer_.AddJointNodes(carriers_);
        return writer_.Add(0, 1, carriers_);
    }

    std::string NameOf(std::size_t node) { return model_.nodes.at(node).name; }

    Importing::SceneContainer scene_ = Support::Scene("Root( A[a] B[b] )");
    Geometry& mesh_ = scene_.GeometryLibrary.at(0);
    NodeWalk walk_ = WalkFromRoot(scene_);
    std::vector<int> carriers_ = {0, 1, 2};
    tinygltf::Model model_;
    Buffers buffers_{model_};
    AnimationWriter animations_{buffers_, model_};
    SkinWriter writer_{scene_, walk_, buffers_, animations_, model_};
};

TEST_F(GltfSkins, JointsThatAreNoNodesStandBelowTheMeshsNode)
{
    EXPECT_EQ(AddFirst(), 0);
    ASSERT_EQ(model_.nodes.size(), 6U);
    EXPECT_THAT(model_.skins.at(0).joints, ElementsAre(3, 4, 5));
    EXPECT_EQ(model_.skins[0].name, "Arm");
    EXPECT_THAT(model_.nodes[1].children, ElementsAre(3));
    EXPECT_THAT(model_.nodes[3].children, ElementsAre(4));
    EXPECT_THAT(model_.nodes[4].children, ElementsAre(5));
    EXPECT_EQ(NameOf(5), "Hand");
}

TEST_F(GltfSkins, MeshesOfOneSkeletonShareItAndTheirSkin)
{
    writer_.Announce(0, 1);
    writer_.Announce(1, 2);
    writer_.AddJointNodes(carriers_);
    EXPECT_EQ(model_.nodes.size(), 6U);
    EXPECT_EQ(writer_.Add(0, 1, carriers_), 0);
    EXPECT_EQ(writer_.Add(1, 2, carriers_), 0);
    D3DXMATRIX bind;
    D3DXMatrixTranslation(&bind, 1, 0, 0);
    mesh_.JointArray[0].SetBindPoseInverse(bind);
    EXPECT_EQ(writer_.Add(0, 1, carriers_), 1) << "other bind poses are another skin";
    EXPECT_EQ(model_.skins.at(1).joints, model_.skins.at(0).joints);
}

TEST_F(GltfSkins, AJointThatIsANodeIsThatNode)
{
    mesh_.JointArray[0].SetName("B");
    EXPECT_EQ(AddFirst(), 0);
    EXPECT_THAT(model_.skins.at(0).joints, ElementsAre(2, 3, 4));
    EXPECT_THAT(model_.nodes[2].children, ElementsAre(3));
    EXPECT_EQ(writer_.NameOf(2), "B");
}

TEST_F(GltfSkins, JointsHaveNamesThatNothingElseHas)
{
    scene_.NodeLibrary[2].SetName("Hand");
    scene_.SurfaceLibrary[1].SetName("joint");
    mesh_.JointArray[0].SetName("A");
    mesh_.JointArray[0].SetLocalTM(Support::Translation(1, 0, 0));
    mesh_.JointArray[1].SetName("");
    AddFirst();
    EXPECT_EQ(writer_.NameOf(2), "Hand") << "no joint";
    EXPECT_EQ(NameOf(3), "A_2");
    EXPECT_EQ(NameOf(4), "joint_2") << "a surface of that name may have a node of its own";
    EXPECT_EQ(NameOf(5), "Hand_2");
}

TEST_F(GltfSkins, PlacementsAndBindPosesAreKept)
{
    D3DXMATRIX bind;
    D3DXMatrixTranslation(&bind, 1, 2, 3);
    mesh_.JointArray[1].SetBindPoseInverse(bind);
    mesh_.JointArray[1].SetLocalTM(Support::Translation(4, 5, 6));
    AddFirst();
    ASSERT_EQ(model_.nodes[4].matrix.size(), 16U);
    EXPECT_EQ(model_.nodes[4].matrix[13], 5);
    const D3DXMATRIX written = ReadArray<D3DXMATRIX>(model_, model_.skins[0].inverseBindMatrices)[1];
    EXPECT_EQ(D3DXVECTOR3(written._41, written._42, written._43), D3DXVECTOR3(1, 2, 3));
}

TEST_F(GltfSkins, TheShapeInWhichAMeshWasBoundGoesIntoItsBindPoses)
{
    D3DXMATRIX bind;
    D3DXMatrixTranslation(&bind, 1, 2, 3);
    mesh_.JointArray[1].SetBindPoseInverse(bind);
    mesh_.SetBindShapeTransform(Support::Scaling(2, 2, 2));
    AddFirst();
    const D3DXMATRIX written = ReadArray<D3DXMATRIX>(model_, model_.skins[0].inverseBindMatrices)[1];
    EXPECT_EQ(D3DXVECTOR3(written._11, written._41, written._42), D3DXVECTOR3(2, 1, 2));
}

TEST_F(GltfSkins, AJointThatShearsHangsFromANodeThatTurnsItBack)
{
    D3DXMATRIX shear;
    D3DXMatrixIdentity(&shear);
    shear._21 = 1;
    mesh_.JointArray[0].SetLocalTM(shear);
    AddFirst();
    ASSERT_EQ(model_.nodes.size(), 7U);
    EXPECT_EQ(NameOf(3), "Shoulder (sheared)");
    EXPECT_EQ(NameOf(4), "Shoulder");
    EXPECT_THAT(model_.nodes[3].children, ElementsAre(4));
    EXPECT_THAT(model_.nodes[4].children, ElementsAre(5));
    EXPECT_THAT(model_.skins[0].joints, ElementsAre(4, 5, 6));
    EXPECT_TRUE(model_.nodes[4].translation.empty());
    EXPECT_EQ(model_.nodes[4].rotation.size(), 4U);
}

TEST_F(GltfSkins, MatricesThatAreNotFiniteAreTheIdentity)
{
    D3DXMATRIX lost;
    D3DXMatrixScaling(&lost, std::numeric_limits<float>::infinity(), 1, 1);
    mesh_.JointArray[0].SetBindPoseInverse(lost);
    mesh_.JointArray[0].SetLocalTM(lost);
    AddFirst();
    EXPECT_EQ(ReadArray<D3DXMATRIX>(model_, model_.skins[0].inverseBindMatrices)[0]._11, 1);
    EXPECT_TRUE(model_.nodes[3].scale.empty());
    EXPECT_TRUE(model_.nodes[3].matrix.empty());
}

TEST_F(GltfSkins, JointsMove)
{
    scene_.AnimationLibrary.resize(1);
    scene_.AnimationLibrary[0].resize(2);
    scene_.AnimationLibrary[0][1].SetTime(4800);
    mesh_.JointArray[2].SetAnimationID(0);
    mesh_.JointArray[1].SetAnimationID(1);  // there is none
    AddFirst();
    animations_.Finish();
    ASSERT_EQ(model_.animations.size(), 1U);
    EXPECT_EQ(model_.animations[0].channels.size(), 3U);
    EXPECT_EQ(model_.animations[0].channels[0].target_node, 5);
    EXPECT_TRUE(model_.nodes[5].matrix.empty()) << "what moves is placed in parts";
}

}  // namespace
