#include <sceneprep/export/gltf/BuildModel.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/Meshes.h>

#include <limits>

namespace
{

using namespace Sceneprep::Gltf;
using Importing::Node;
using Importing::SceneContainer;
using Importing::Surface;
using testing::ElementsAre;

class GltfBuildModel : public testing::Test
{
protected:
    GltfBuildModel()
    {
        AddNode("Root");
        scene_.SetRootNodeIndex(0);
        scene_.GeometryLibrary.push_back(Support::Triangle());
    }

    int AddNode(const std::string& name, int parent = -1)
    {
        Node node;
        node.SetName(name);
        scene_.NodeLibrary.push_back(node);
        const int index = static_cast<int>(scene_.NodeLibrary.size() - 1);
        if (parent >= 0)
            scene_.NodeLibrary[static_cast<std::size_t>(parent)].ChildList.push_back(index);
        return index;
    }

    int AddSurface(int node, int geometry = 0, const std::string& name = "")
    {
        Surface surface;
        surface.SetGeometryID(geometry);
        surface.SetName(name);
        scene_.SurfaceLibrary.push_back(surface);
        const int index = static_cast<int>(scene_.SurfaceLibrary.size() - 1);
        scene_.NodeLibrary[static_cast<std::size_t>(node)].SurfaceList.push_back(index);
        return index;
    }

    void SetLocal(int node, const D3DXMATRIX& matrix)
    {
        scene_.NodeLibrary[static_cast<std::size_t>(node)].SetLocalTransform(Importing::Transform(matrix));
    }

    const tinygltf::Model& Build()
    {
        built_ = BuildModel(scene_, {}, "a", true);
        return built_.model;
    }

    SceneContainer scene_;
    BuiltModel built_;
};

TEST_F(GltfBuildModel, NodesKeepTheirOrderNamesAndNotes)
{
    const int house = AddNode("House", 0);
    AddNode("Door", house);
    AddNode("Tree", 0);
    AddNode("Nowhere");
    scene_.NodeLibrary[1].SetNote("old");
    const tinygltf::Model& model = Build();
    ASSERT_EQ(model.nodes.size(), 4U);
    EXPECT_EQ(model.nodes[0].name, "Root");
    EXPECT_THAT(model.nodes[0].children, ElementsAre(1, 3));
    EXPECT_THAT(model.nodes[1].children, ElementsAre(2));
    EXPECT_EQ(model.nodes[1].extras.Get("note").Get<std::string>(), "old");
    EXPECT_FALSE(model.nodes[2].extras.IsObject());
    EXPECT_THAT(model.scenes.at(0).nodes, ElementsAre(0));
}

TEST_F(GltfBuildModel, ASceneWithoutARootIsEmpty)
{
    scene_.SetRootNodeIndex(-1);
    const tinygltf::Model& model = Build();
    EXPECT_TRUE(model.nodes.empty());
    EXPECT_TRUE(model.scenes.empty());
}

TEST_F(GltfBuildModel, OneSurfaceIsTheNodesMeshAndSeveralHaveAChildEach)
{
    const int hut = AddNode("Hut", 0);
    AddSurface(0, 0, "Ground");
    AddSurface(hut, 0, "Wall");
    AddSurface(hut, 0, "Roof");
    const tinygltf::Model& model = Build();
    ASSERT_EQ(model.nodes.size(), 4U);
    EXPECT_EQ(model.nodes[0].mesh, 0);
    EXPECT_EQ(model.nodes[1].mesh, -1);
    EXPECT_THAT(model.nodes[1].children, ElementsAre(2, 3));
    EXPECT_EQ(model.nodes[2].name, "Wall");
    EXPECT_EQ(model.nodes[3].mesh, 0) << "one geometry and one material are one mesh";
    EXPECT_EQ(model.meshes.size(), 1U);
}

TEST_F(GltfBuildModel, SurfacesSpeakThroughTheirNodesExtras)
{
    scene_.GeometryLibrary[0].SetName("Mesh");
    const int first = AddNode("A", 0);
    scene_.NodeLibrary[static_cast<std::size_t>(first)].SetNote("old");
    scene_.SurfaceLibrary[static_cast<std::size_t>(AddSurface(first, 0, "Wall"))].SetCollisionOffset(2);
    AddSurface(AddNode("B", 0), 0, "Mesh");
    const tinygltf::Model& model = Build();
    EXPECT_EQ(model.nodes[1].extras.Get("collisionOffset").GetNumberAsInt(), 2);
    EXPECT_EQ(model.nodes[1].extras.Get("surfaceName").Get<std::string>(), "Wall");
    EXPECT_EQ(model.nodes[1].extras.Get("note").Get<std::string>(), "old");
    EXPECT_FALSE(model.nodes[2].extras.IsObject()) << "nothing that the mesh does not say";
    EXPECT_EQ(model.nodes[1].mesh, model.nodes[2].mesh);
}

TEST_F(GltfBuildModel, SurfacesOfOtherMaterialsShareTheArraysAlone)
{
    scene_.MaterialLibrary.resize(1);
    AddSurface(AddNode("A", 0));
    scene_.SurfaceLibrary[static_cast<std::size_t>(AddSurface(AddNode("B", 0)))].SetMaterialID(0);
    const tinygltf::Model& model = Build();
    ASSERT_EQ(model.meshes.size(), 2U);
    EXPECT_EQ(model.meshes[0].primitives[0].attributes, model.meshes[1].primitives[0].attributes);
    EXPECT_NE(model.meshes[0].primitives[0].material, model.meshes[1].primitives[0].material);
}

TEST_F(GltfBuildModel, SurfacesWithNothingToShowAreLeftOut)
{
    AddSurface(0, -1);
    scene_.GeometryLibrary.emplace_back();
    AddSurface(0, 1);
    const tinygltf::Model& model = Build();
    EXPECT_TRUE(model.meshes.empty());
    EXPECT_EQ(model.nodes[0].mesh, -1);
}

TEST_F(GltfBuildModel, AShearedNodeCarriesItsChildrenBelowATurn)
{
    const int sheared = AddNode("Leaning", 0);
    const int child = AddNode("Child", sheared);
    AddSurface(sheared);
    AddSurface(child);
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    matrix._21 = 0.5F;
    SetLocal(sheared, matrix);
    const tinygltf::Model& model = Build();
    ASSERT_EQ(model.nodes.size(), 4U);
    EXPECT_THAT(model.nodes[1].children, ElementsAre(3));
    EXPECT_THAT(model.nodes[3].children, ElementsAre(2));
    EXPECT_EQ(model.nodes[1].mesh, -1);
    EXPECT_EQ(model.nodes[3].mesh, 0);
    EXPECT_EQ(model.nodes[3].name, "Leaning (turned)");
    EXPECT_EQ(model.nodes[3].rotation.size(), 4U);
    EXPECT_TRUE(model.nodes[3].scale.empty());
}

TEST_F(GltfBuildModel, ANodeWithoutAPlaceIsTold)
{
    D3DXMATRIX matrix;
    D3DXMatrixScaling(&matrix, std::numeric_limits<float>::quiet_NaN(), 1, 1);
    SetLocal(AddNode("Lost", 0), matrix);
    Build();
    EXPECT_THAT(built_.notes, ElementsAre("what has a matrix that is not finite is placed where its parent is (1)"));
}

TEST_F(GltfBuildModel, ANodeThatMovesIsPlacedInParts)
{
    D3DXMATRIX matrix;
    D3DXMatrixTranslation(&matrix, 1, 2, 3);
    const int mill = AddNode("Mill", 0);
    SetLocal(mill, matrix);
    scene_.NodeLibrary[static_cast<std::size_t>(mill)].SetAnimationID(0);
    scene_.AnimationLibrary.resize(1);
    scene_.AnimationLibrary[0].resize(1);
    const tinygltf::Model& model = Build();
    EXPECT_TRUE(model.nodes[1].matrix.empty());
    EXPECT_THAT(model.nodes[1].translation, ElementsAre(1, 2, 3));
    ASSERT_EQ(model.animations.size(), 1U);
    EXPECT_EQ(model.animations[0].channels[0].target_node, 1);
}

TEST_F(GltfBuildModel, ASkinnedSurfaceStandsAtItsNodeAndJointsBelowIt)
{
    scene_.GeometryLibrary[0].JointArray.resize(1);
    scene_.GeometryLibrary[0].VertexArray[0].AddWeight(0, 1);
    AddSurface(0, 0, "Skin");
    const tinygltf::Model& model = Build();
    ASSERT_EQ(model.nodes.size(), 2U);
    EXPECT_THAT(model.nodes[0].children, ElementsAre(1));
    EXPECT_EQ(model.nodes[0].mesh, 0);
    EXPECT_EQ(model.nodes[0].skin, 0);
    EXPECT_THAT(model.skins.at(0).joints, ElementsAre(1));
}

TEST_F(GltfBuildModel, JointsThatAreNodesAreThose)
{
    const int hip = AddNode("Hip", 0);
    const int body = AddNode("Body", 0);
    AddNode("Hip", body);
    SetLocal(hip, *D3DXMatrixTranslation(std::make_unique<D3DXMATRIX>().get(), 1, 0, 0));
    Importing::Joint& joint = scene_.GeometryLibrary[0].JointArray.emplace_back(std::string("Hip"));
    joint.SetLocalTM(scene_.NodeLibrary[1].GetLocalTransform().GetMatrix());
    scene_.GeometryLibrary[0].VertexArray[0].AddWeight(0, 1);
    AddSurface(body);
    const tinygltf::Model& model = Build();
    EXPECT_EQ(model.nodes.size(), 4U);
    EXPECT_THAT(model.skins.at(0).joints, ElementsAre(1));
    EXPECT_EQ(model.nodes[1].name, "Hip_2") << "a joint's name is its own";
    EXPECT_EQ(model.nodes[3].name, "Hip");
}

TEST_F(GltfBuildModel, CamerasAndLightsStandAtChildrenUnlessTheyLookTheFormatsWay)
{
    Importing::Camera forwards;
    forwards.SetName("Eye");
    scene_.CameraLibrary.push_back(forwards);
    Importing::Light sun;
    sun.SetType(Importing::Light::LightType::Directional);
    D3DXMATRIX halfTurn(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1);
    sun.SetOffsetMatrix(Importing::Transform(halfTurn));
    scene_.LightLibrary.push_back(sun);
    scene_.LightLibrary.push_back(sun);
    scene_.NodeLibrary[0].CameraList = {0};
    scene_.NodeLibrary[0].LightList = {0, 1};
    const tinygltf::Model& model = Build();
    ASSERT_EQ(model.nodes.size(), 3U);
    EXPECT_EQ(model.nodes[1].camera, 0);
    EXPECT_EQ(model.nodes[1].name, "Eye");
    EXPECT_EQ(model.nodes[0].extensions.at("KHR_lights_punctual").Get("light").GetNumberAsInt(), 0);
    EXPECT_EQ(model.nodes[2].extensions.at("KHR_lights_punctual").Get("light").GetNumberAsInt(), 1)
        << "a second light needs a node of its own";
    EXPECT_THAT(model.extensionsUsed, ElementsAre("KHR_lights_punctual"));
}

TEST_F(GltfBuildModel, WhatIsLeftOutOrMendedIsTold)
{
    scene_.LightLibrary.emplace_back();
    scene_.NodeLibrary[0].LightList = {0};
    scene_.TextureLibrary.emplace_back("a.png");
    Importing::Map map;
    map.SetTextureID(0);
    map.SetType("sheen");
    const int surface = AddSurface(0);
    scene_.SurfaceLibrary[static_cast<std::size_t>(surface)].MapList.push_back(map);
    scene_.GeometryLibrary[0].VertexArray[0].SetNormal(D3DXVECTOR3(0, 0, 0));
    Build();
    EXPECT_THAT(
        built_.notes,
        ElementsAre("normals without a direction are replaced by those of a face (1)",
                    "lights without a kind are left out (1)",
                    "texture layers that glTF has no place for, or the mesh no texture coordinates, are left out: "
                    "sheen"));
}

TEST_F(GltfBuildModel, ADeepHierarchyIsNoProblem)
{
    int parent = 0;
    for (int i = 0; i < 100000; ++i)
        parent = AddNode("", parent);
    EXPECT_EQ(Build().nodes.size(), 100001U);
}

TEST_F(GltfBuildModel, IndicesThatLeadNowhereThrow)
{
    AddSurface(0, 5);
    EXPECT_THROW(Build(), std::out_of_range);
}

TEST_F(GltfBuildModel, TellsItsPartByTheSurfacesThatAreDone)
{
    AddSurface(0);
    AddSurface(AddNode("A", 0));
    std::vector<double> parts;
    BuildModel(scene_, {}, "a", true, [&parts](double part) { parts.push_back(part); });
    EXPECT_EQ(parts, (std::vector<double>{0.5, 1}));
}

}  // namespace
