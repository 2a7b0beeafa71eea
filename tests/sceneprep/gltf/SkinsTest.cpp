#include <sceneprep/gltf/Skins.h>

#include <gtest/gtest.h>
#include <sceneprep/gltf/ReadBack.h>
#include <support/Meshes.h>

#include <limits>

namespace
{

using Importing::Geometry;
using namespace Sceneprep::Gltf;
using SceneprepTests::ReadArray;

class GltfSkins : public testing::Test
{
protected:
    GltfSkins()
    {
        model_.nodes.resize(2);
        mesh_.SetName("Arm");
        for (const char* name : {"Shoulder", "Elbow", "Hand"})
            mesh_.JointArray.emplace_back(std::string(name));
    }

    void SetParents(const std::vector<int>& parents)
    {
        for (std::size_t j = 0; j < parents.size(); ++j)
            mesh_.JointArray[j].SetParentID(parents[j]);
    }

    Importing::SceneContainer scene_;
    Geometry mesh_ = Support::Triangle();
    tinygltf::Model model_;
    Buffers buffers_{model_};
    AnimationWriter animations_{buffers_, model_};
    SkinWriter writer_{scene_, buffers_, animations_, model_};
};

TEST_F(GltfSkins, JointsAreNodesBelowTheMeshesNode)
{
    SetParents({-1, 0, 1});
    EXPECT_EQ(writer_.Add(mesh_, 1), 0);
    ASSERT_EQ(model_.nodes.size(), 5U);
    EXPECT_EQ(model_.skins[0].joints, (std::vector<int>{2, 3, 4}));
    EXPECT_EQ(model_.skins[0].name, "Arm");
    EXPECT_EQ(model_.nodes[1].children, std::vector<int>{2});
    EXPECT_EQ(model_.nodes[2].children, std::vector<int>{3});
    EXPECT_EQ(model_.nodes[3].children, std::vector<int>{4});
    EXPECT_EQ(model_.nodes[4].name, "Hand");
}

TEST_F(GltfSkins, JointsInACircleAreCutApart)
{
    SetParents({2, 0, 1});
    writer_.Add(mesh_, 0);
    std::size_t edges = 0;
    for (const tinygltf::Node& node : model_.nodes)
        edges += node.children.size();
    EXPECT_EQ(edges, 3U);
    EXPECT_EQ(model_.nodes[0].children.size(), 1U);
}

TEST_F(GltfSkins, AJointThatIsItsOwnParentOrHasAnUnknownOneStandsBelowTheNode)
{
    SetParents({0, 9, -7});
    writer_.Add(mesh_, 0);
    EXPECT_EQ(model_.nodes[0].children, (std::vector<int>{2, 3, 4}));
}

TEST_F(GltfSkins, PlacementsAndBindPosesAreKept)
{
    D3DXMATRIX bind;
    D3DXMatrixTranslation(&bind, 1, 2, 3);
    mesh_.JointArray[1].SetBindPoseInverse(bind);
    D3DXMATRIX local;
    D3DXMatrixTranslation(&local, 4, 5, 6);
    mesh_.JointArray[1].SetLocalTM(local);
    writer_.Add(mesh_, 0);
    EXPECT_EQ(model_.nodes[3].translation, (std::vector<double>{4, 5, 6}));
    const D3DXMATRIX written = ReadArray<D3DXMATRIX>(model_, model_.skins[0].inverseBindMatrices)[1];
    EXPECT_EQ(D3DXVECTOR3(written._41, written._42, written._43), D3DXVECTOR3(1, 2, 3));
}

TEST_F(GltfSkins, MatricesThatAreNotFiniteAreTheIdentity)
{
    D3DXMATRIX lost;
    D3DXMatrixScaling(&lost, std::numeric_limits<float>::infinity(), 1, 1);
    mesh_.JointArray[0].SetBindPoseInverse(lost);
    mesh_.JointArray[0].SetLocalTM(lost);
    writer_.Add(mesh_, 0);
    EXPECT_EQ(ReadArray<D3DXMATRIX>(model_, model_.skins[0].inverseBindMatrices)[0]._11, 1);
    EXPECT_TRUE(model_.nodes[2].scale.empty());
}

TEST_F(GltfSkins, EveryNodeThatShowsTheMeshHasJointsOfItsOwn)
{
    writer_.Add(mesh_, 0);
    EXPECT_EQ(writer_.Add(mesh_, 1), 1);
    EXPECT_EQ(model_.skins[1].joints, (std::vector<int>{5, 6, 7}));
    EXPECT_EQ(model_.skins[1].inverseBindMatrices, model_.skins[0].inverseBindMatrices);
}

TEST_F(GltfSkins, JointsMove)
{
    scene_.AnimationLibrary.resize(1);
    scene_.AnimationLibrary[0].resize(2);
    scene_.AnimationLibrary[0][1].SetTime(4800);
    mesh_.JointArray[2].SetAnimationID(0);
    mesh_.JointArray[1].SetAnimationID(1);  // there is none
    writer_.Add(mesh_, 0);
    animations_.Finish();
    ASSERT_EQ(model_.animations.size(), 1U);
    EXPECT_EQ(model_.animations[0].channels.size(), 3U);
    EXPECT_EQ(model_.animations[0].channels[0].target_node, 4);
}

}  // namespace
