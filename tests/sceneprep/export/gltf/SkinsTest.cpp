#include <sceneprep/export/gltf/Skins.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuildModel.h>
#include <sceneprep/export/gltf/ReadBack.h>
#include <support/Meshes.h>
#include <support/SceneText.h>

#include <limits>

namespace
{

using Importing::Geometry;
using namespace Sceneprep;
using namespace Sceneprep::Gltf;

/// A root with two child nodes, both with a mesh of three joints.
class GltfSkins : public testing::Test
{
protected:
    GltfSkins()
    {
        *model_.scene = Support::Scene("Root( A[a] B[b] )");
        for (const std::size_t mesh : {0U, 1U})
        {
            Geometry& geometry = scene_.GeometryLibrary.at(mesh);
            geometry.SetName(mesh == 0 ? "Arm" : "Sleeve");
            for (const char* name : {"Shoulder", "Elbow", "Hand"})
                geometry.JointArray.emplace_back(std::string(name));
            for (std::size_t j = 0; j < 3; ++j)
                geometry.JointArray[j].SetParentID(static_cast<int>(j) - 1);
            for (Importing::Vertex& vertex : geometry.VertexArray)
                vertex.AddWeight(0, 1);
        }
    }

    /// Removes all meshes but the first.
    const Document& BuildFirst()
    {
        scene_.NodeLibrary.at(2).SurfaceList.clear();
        return Build();
    }

    const Document& Build()
    {
        BuildModel(model_, {}, written_.buffers, written_.document);
        return written_.document;
    }

    std::string NameOf(std::size_t node) { return written_.document.nodes.at(node)["name"]; }

    D3DXMATRIX InverseBind(std::size_t joint)
    {
        return written_.Read<D3DXMATRIX>(written_.document.skins.at(0)["inverseBindMatrices"])[joint];
    }

    Model model_;
    Importing::SceneContainer& scene_ = *model_.scene;
    SceneprepTests::WrittenDocument written_;
};

TEST_F(GltfSkins, JointsThatAreNotNodesAreBelowTheNodeOfTheMesh)
{
    const Document& document = BuildFirst();
    ASSERT_EQ(document.nodes.size(), 6U);
    EXPECT_EQ(document.skins.at(0)["joints"], Json::array({3, 4, 5}));
    EXPECT_EQ(document.skins[0]["name"], "Arm");
    EXPECT_EQ(document.nodes[1]["skin"], 0);
    EXPECT_EQ(document.nodes[1]["children"], Json::array({3}));
    EXPECT_EQ(document.nodes[3]["children"], Json::array({4}));
    EXPECT_EQ(document.nodes[4]["children"], Json::array({5}));
    EXPECT_EQ(NameOf(5), "Hand");
}

TEST_F(GltfSkins, MeshesOfOneSkeletonShareItsNodesAndTheirSkin)
{
    const Document& document = Build();
    EXPECT_EQ(document.nodes.size(), 6U);
    EXPECT_EQ(document.skins.size(), 1U);
    EXPECT_EQ(document.nodes[2]["skin"], 0);
}

TEST_F(GltfSkins, DifferentBindPosesAreDifferentSkins)
{
    scene_.GeometryLibrary[1].JointArray[0].SetBindPoseInverse(Support::Translation(1, 0, 0));
    const Document& document = Build();
    ASSERT_EQ(document.skins.size(), 2U);
    EXPECT_EQ(document.skins[1]["joints"], document.skins[0]["joints"]);
}

TEST_F(GltfSkins, AJointThatIsANodeIsThatNode)
{
    scene_.GeometryLibrary[0].JointArray[0].SetName("B");
    const Document& document = BuildFirst();
    EXPECT_EQ(document.skins.at(0)["joints"], Json::array({2, 3, 4}));
    EXPECT_EQ(document.nodes[2]["children"], Json::array({3}));
    EXPECT_EQ(NameOf(2), "B");
}

TEST_F(GltfSkins, JointsHaveUniqueNames)
{
    Geometry& mesh = scene_.GeometryLibrary[0];
    scene_.NodeLibrary[2].SetName("Hand");
    scene_.SurfaceLibrary[1].SetName("joint");
    mesh.JointArray[0].SetName("A");
    mesh.JointArray[0].SetLocalTM(Support::Translation(1, 0, 0));
    mesh.JointArray[1].SetName("");
    BuildFirst();
    EXPECT_EQ(NameOf(2), "Hand") << "not a joint";
    EXPECT_EQ(NameOf(3), "A_2");
    EXPECT_EQ(NameOf(4), "joint_2") << "a surface of that name may have a node of its own";
    EXPECT_EQ(NameOf(5), "Hand_2");
}

TEST_F(GltfSkins, TransformsAndBindPosesAreKept)
{
    Geometry& mesh = scene_.GeometryLibrary[0];
    mesh.JointArray[1].SetBindPoseInverse(Support::Translation(1, 2, 3));
    mesh.JointArray[1].SetLocalTM(Support::Translation(4, 5, 6));
    const Document& document = BuildFirst();
    EXPECT_EQ(document.nodes[4]["matrix"][13], 5);
    const D3DXMATRIX written = InverseBind(1);
    EXPECT_EQ(D3DXVECTOR3(written._41, written._42, written._43), D3DXVECTOR3(1, 2, 3));
}

TEST_F(GltfSkins, TheBindShapeIsPartOfTheBindPoses)
{
    Geometry& mesh = scene_.GeometryLibrary[0];
    mesh.JointArray[1].SetBindPoseInverse(Support::Translation(1, 2, 3));
    mesh.SetBindShapeTransform(Support::Scaling(2, 2, 2));
    BuildFirst();
    const D3DXMATRIX written = InverseBind(1);
    EXPECT_EQ(D3DXVECTOR3(written._11, written._41, written._42), D3DXVECTOR3(2, 1, 2));
}

TEST_F(GltfSkins, AShearedJointIsBelowANodeThatShears)
{
    D3DXMATRIX shear;
    D3DXMatrixIdentity(&shear);
    shear._21 = 1;
    scene_.GeometryLibrary[0].JointArray[0].SetLocalTM(shear);
    const Document& document = BuildFirst();
    ASSERT_EQ(document.nodes.size(), 7U);
    EXPECT_EQ(NameOf(3), "Shoulder (sheared)");
    EXPECT_EQ(NameOf(6), "Shoulder");
    EXPECT_EQ(document.nodes[3]["children"], Json::array({6}));
    EXPECT_EQ(document.nodes[6]["children"], Json::array({4}));
    EXPECT_EQ(document.skins[0]["joints"], Json::array({6, 4, 5}));
    EXPECT_FALSE(document.nodes[6].contains("translation"));
    EXPECT_EQ(document.nodes[6]["rotation"].size(), 4U);
}

TEST_F(GltfSkins, MatricesThatAreNotFiniteAreTheIdentity)
{
    D3DXMATRIX lost;
    D3DXMatrixScaling(&lost, std::numeric_limits<float>::infinity(), 1, 1);
    scene_.GeometryLibrary[0].JointArray[0].SetBindPoseInverse(lost);
    scene_.GeometryLibrary[0].JointArray[0].SetLocalTM(lost);
    const Document& document = BuildFirst();
    EXPECT_EQ(InverseBind(0)._11, 1);
    EXPECT_FALSE(document.nodes[3].contains("scale"));
    EXPECT_FALSE(document.nodes[3].contains("matrix"));
}

TEST_F(GltfSkins, JointsAreAnimated)
{
    scene_.AnimationLibrary.resize(1);
    scene_.AnimationLibrary[0].resize(2);
    scene_.AnimationLibrary[0][1].SetTime(4800);
    scene_.GeometryLibrary[0].JointArray[2].SetAnimationID(0);
    scene_.GeometryLibrary[0].JointArray[1].SetAnimationID(1);  // does not exist
    const Document& document = BuildFirst();
    ASSERT_EQ(document.animations.size(), 1U);
    EXPECT_EQ(document.animations[0]["channels"].size(), 3U);
    EXPECT_EQ(document.animations[0]["channels"][0]["target"]["node"], 5);
    EXPECT_FALSE(document.nodes[5].contains("matrix")) << "animated nodes have their transform in parts";
}

/// A skin of the input: the joints are nodes of the scene.
class GltfKeptSkins : public GltfSkins
{
protected:
    GltfKeptSkins()
    {
        model_.supplement.nodeKeys = {0, 1, 2};
        model_.carried.nodes.resize(3);
        model_.carried.nodes[1].skin = 0;
        model_.carried.skins.resize(1);
        CarriedSkin& skin = model_.carried.skins[0];
        skin.object = Json::parse(R"({"name": "Own", "extras": 1})");
        skin.joints = {2, 0, 2};
        skin.skeleton = 0;
    }
};

TEST_F(GltfKeptSkins, ASkinOfTheInputIsWrittenUnchanged)
{
    const Document& document = BuildFirst();
    EXPECT_EQ(document.nodes.size(), 3U) << "no joint needs a node";
    EXPECT_EQ(document.skins.at(0), Json::parse(R"({"name": "Own", "extras": 1, "skeleton": 0, "joints": [2, 0, 2]})"));
}

TEST_F(GltfKeptSkins, ASkinWithMissingJointsIsReplacedByThatOfTheGeometry)
{
    model_.supplement.nodeKeys[2] = -1;
    EXPECT_EQ(BuildFirst().skins.at(0)["name"], "Arm");
}

TEST_F(GltfKeptSkins, ASkinWithMoreJointsThanTheGeometryIsReplacedByThatOfTheGeometry)
{
    model_.carried.skins[0].joints.push_back(2);
    EXPECT_EQ(BuildFirst().skins.at(0)["name"], "Arm");
}

TEST_F(GltfKeptSkins, JointsThatTheGeometryHasInAdditionDoNotChangeTheSkin)
{
    scene_.GeometryLibrary[0].JointArray.emplace_back(std::string("Frame"));
    const Document& document = BuildFirst();
    EXPECT_EQ(document.nodes.size(), 3U);
    EXPECT_EQ(document.skins.at(0)["name"], "Own");
    EXPECT_EQ(document.skins[0]["joints"].size(), 3U);
}

TEST_F(GltfKeptSkins, IfTheSkeletonHasCollapsedTheLowestNodeAboveAllJointsIsTheSkeleton)
{
    model_.supplement.nodeKeys = {4, 0, 2};
    model_.carried.nodes.resize(5);
    model_.carried.nodes[0].skin = 0;
    model_.carried.skins[0].skeleton = 1;  // not in the scene
    EXPECT_EQ(BuildFirst().skins.at(0)["skeleton"], 0);
    model_.carried.skins[0].joints = {2, 2, 2};
    written_.document = {};
    EXPECT_EQ(Build().skins.at(0)["skeleton"], 2);
}

}  // namespace
