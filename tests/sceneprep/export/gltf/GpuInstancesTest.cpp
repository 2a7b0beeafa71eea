#include <sceneprep/export/gltf/GpuInstances.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/export/gltf/BuiltModel.h>
#include <support/SceneText.h>

#include <cmath>
#include <string>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using Support::Product;
using Support::Scaling;
using Support::Translation;

/// A root with three children that show the same triangle.
class GltfGpuInstances : public SceneprepTests::BuiltModel
{
protected:
    GltfGpuInstances()
    {
        options_.gpuInstancing = true;
        for (const char* name : {"A", "B", "C"})
        {
            const int node = AddNode(name, 0);
            SetLocal(node, Translation(static_cast<float>(node), 2, 3));
            AddSurface(node);
        }
    }

    static const Json* InstancesOf(const Json& node)
    {
        const bool isGroup = node.contains("extensions") && node["extensions"].contains("EXT_mesh_gpu_instancing");
        return isGroup ? &node["extensions"]["EXT_mesh_gpu_instancing"]["attributes"] : nullptr;
    }

    /// Expects that the second child stays a node of its own, and the other two become one.
    void ExpectSecondStays()
    {
        const Document& document = Build();
        ASSERT_EQ(document.nodes.size(), 3U);
        ASSERT_NE(InstancesOf(document.nodes[1]), nullptr);
        EXPECT_EQ(document.nodes[2]["name"], "B");
        EXPECT_EQ(InstancesOf(document.nodes[2]), nullptr);
        EXPECT_TRUE(document.nodes[2].contains("mesh"));
    }
};

TEST_F(GltfGpuInstances, SiblingsThatShareAMeshAreOneNode)
{
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 2U);
    EXPECT_EQ(document.nodes[0]["children"], Json::array({1}));
    EXPECT_EQ(document.nodes[1]["name"], "A");
    EXPECT_EQ(document.nodes[1]["mesh"], 0);
    EXPECT_FALSE(document.nodes[1].contains("matrix"));
    const Json* attributes = InstancesOf(document.nodes[1]);
    ASSERT_NE(attributes, nullptr);
    EXPECT_EQ(attributes->size(), 1U) << "there is neither rotation nor scale";
    const auto translations = written_.Read<D3DXVECTOR3>((*attributes)["TRANSLATION"]);
    ASSERT_EQ(translations.size(), 3U);
    EXPECT_EQ(translations[2], D3DXVECTOR3(3, 2, 3));
    EXPECT_THAT(UsedExtensions(document), testing::Contains("EXT_mesh_gpu_instancing"));
    EXPECT_THAT(document.requiredExtensions, testing::Contains("EXT_mesh_gpu_instancing"));
}

TEST_F(GltfGpuInstances, TransformsHaveThreeParts)
{
    const D3DXMATRIX quarterTurn(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    SetLocal(2, Product(Product(Scaling(2, 3, 4), quarterTurn), Translation(5, 6, 7)));
    const Json attributes = *InstancesOf(Build().nodes.at(1));
    EXPECT_EQ(written_.Read<D3DXVECTOR3>(attributes["TRANSLATION"])[1], D3DXVECTOR3(5, 6, 7));
    const D3DXVECTOR3 scale = written_.Read<D3DXVECTOR3>(attributes["SCALE"])[1];
    EXPECT_NEAR(scale.x, 2, 1e-5);
    EXPECT_NEAR(scale.y, 3, 1e-5);
    EXPECT_NEAR(scale.z, 4, 1e-5);
    const auto rotation = written_.Read<D3DXQUATERNION>(attributes["ROTATION"])[1];
    EXPECT_NEAR(std::fabs(rotation.z), std::sqrt(0.5), 1e-6);
    EXPECT_NEAR(rotation.w * rotation.z, 0.5, 1e-6);
}

TEST_F(GltfGpuInstances, WithoutTheOptionAllStayNodes)
{
    options_.gpuInstancing = false;
    EXPECT_EQ(Build().nodes.size(), 4U);
}

TEST_F(GltfGpuInstances, ANodeWithAChildStays)
{
    AddNode("Child", 2);
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 4U);
    EXPECT_EQ(document.nodes[2]["name"], "B");
    EXPECT_EQ(document.nodes[2]["children"], Json::array({3}));
}

TEST_F(GltfGpuInstances, ANodeWithANoteStays)
{
    NodeAt(2).SetNote("note");
    ExpectSecondStays();
}

TEST_F(GltfGpuInstances, AnAnimatedNodeStays)
{
    scene_.AnimationLibrary.resize(1);
    scene_.AnimationLibrary[0].resize(1);
    NodeAt(2).SetAnimationID(0);
    ExpectSecondStays();
}

TEST_F(GltfGpuInstances, AKeptNodeStays)
{
    model_.supplement.keptNodes = {false, false, true};
    ExpectSecondStays();
}

TEST_F(GltfGpuInstances, ANodeWithExtrasStays)
{
    model_.supplement.nodeKeys = {-1, -1, 0};
    model_.carried.nodes.resize(1);
    model_.carried.nodes[0].object = Json::parse(R"({"extras": 1})");
    ExpectSecondStays();
}

TEST_F(GltfGpuInstances, ANodeWithACameraStays)
{
    scene_.CameraLibrary.resize(1);
    NodeAt(2).CameraList = {0};
    Build();
    EXPECT_EQ(written_.document.nodes[2]["name"], "B");
    EXPECT_EQ(InstancesOf(written_.document.nodes[2]), nullptr);
}

TEST_F(GltfGpuInstances, ANodeThatMirrorsStays)
{
    SetLocal(2, Scaling(-1, 1, 1));
    ExpectSecondStays();
}

TEST_F(GltfGpuInstances, ANodeThatShearsStays)
{
    D3DXMATRIX shear = Scaling(1, 1, 1);
    shear._21 = 0.01F;
    SetLocal(2, shear);
    const Document& document = Build();
    EXPECT_EQ(document.nodes[2]["name"], "B");
    EXPECT_EQ(InstancesOf(document.nodes[2]), nullptr);
}

TEST_F(GltfGpuInstances, ANodeWithAnotherMaterialOrCollisionOffsetStays)
{
    SurfaceAt(1).SetCollisionOffset(3);
    ExpectSecondStays();
    written_.document = {};
    SurfaceAt(1).SetCollisionOffset(0);
    scene_.MaterialLibrary.resize(1);
    SurfaceAt(1).SetMaterialID(0);
    ExpectSecondStays();
}

TEST_F(GltfGpuInstances, NamesOfSurfacesStayWhereTheyAreEqual)
{
    for (const int surface : {0, 1, 2})
        SurfaceAt(surface).SetName("Wall");
    EXPECT_EQ(Build().nodes.at(1)["extras"], Json::parse(R"({"surfaceName": "Wall"})"));
    written_.document = {};
    SurfaceAt(2).SetName("Roof");
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 2U);
    EXPECT_FALSE(document.nodes[1].contains("extras"));
}

TEST_F(GltfGpuInstances, ANodeWithASkinStays)
{
    scene_.GeometryLibrary.push_back(scene_.GeometryLibrary[0]);
    scene_.GeometryLibrary[1].JointArray.emplace_back(std::string("Joint"));
    for (Importing::Vertex& vertex : scene_.GeometryLibrary[1].VertexArray)
        vertex.AddWeight(0, 1);
    SurfaceAt(1).SetGeometryID(1);
    SurfaceAt(2).SetGeometryID(1);
    for (const Json& node : Build().nodes)
        EXPECT_EQ(InstancesOf(node), nullptr);
}

TEST_F(GltfGpuInstances, NodesOfDifferentParentsAreDifferentGroups)
{
    NodeAt(0).ChildList.pop_back();
    const int parent = AddNode("P", 0);
    NodeAt(parent).ChildList = {3};
    AddSurface(AddNode("D", parent));
    const Document& document = Build();
    ASSERT_EQ(document.nodes.size(), 4U);
    EXPECT_EQ(written_.Read<D3DXVECTOR3>((*InstancesOf(document.nodes[1]))["TRANSLATION"]).size(), 2U);
    EXPECT_EQ(written_.Read<D3DXVECTOR3>((*InstancesOf(document.nodes[3]))["TRANSLATION"]).size(), 2U);
}

}  // namespace
