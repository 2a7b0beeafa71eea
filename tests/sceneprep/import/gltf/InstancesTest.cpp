#include <sceneprep/import/gltf/Instances.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

/// A triangle with two instances.
GltfDocument TwoInstances()
{
    GltfDocument document;
    document.AddTriangle();
    document.json["nodes"][0]["extensions"]["EXT_mesh_gpu_instancing"]["attributes"] = {
        {"TRANSLATION", document.Accessor<float>({1, 2, 3, 4, 5, 6}, "VEC3", 3)},
        {"SCALE", document.Accessor<float>({1, 1, 1, -1, 2, 2}, "VEC3", 3)},
        {"ROTATION", document.Accessor<std::int8_t>({0, 0, 0, 127, 0, 0, 0, 127}, "VEC4", 4, {{"normalized", true}})}};
    return document;
}

TEST(Instances, AreChildNodesThatShareTheMesh)
{
    const Model model = TwoInstances().Read();
    EXPECT_EQ(Support::ToText(*model.scene), "Node( Node[Mesh] Node[Mesh] )");
    EXPECT_EQ(model.scene->GeometryLibrary.size(), 1U);
    const D3DXMATRIX second = model.scene->NodeLibrary.at(2).GetLocalTransform().GetMatrix();
    EXPECT_EQ(second._11, -1);
    EXPECT_EQ(second._22, 2);
    EXPECT_EQ(second._43, 6);
    EXPECT_THAT(model.supplement.nodeKeys, testing::ElementsAre(0, -1, -1));
    EXPECT_EQ(model.carried.nodes.at(0).object.dump(), R"({"name":"Node"})");
    EXPECT_TRUE(model.notes.Empty());
}

TEST(Instances, HaveTheWeightsOfTheirNode)
{
    GltfDocument document = TwoInstances();
    document.json["nodes"][0]["weights"] = {0.5};
    const Model model = document.Read();
    EXPECT_THAT(model.supplement.nodeKeys, testing::ElementsAre(0, 1, 2));
    EXPECT_EQ(model.carried.nodes.at(2).object["weights"], Json::array({0.5}));
    EXPECT_EQ(model.carried.nodes.at(2).local._43, 6);
}

TEST(Instances, FurtherAttributesAreALoss)
{
    GltfDocument document = TwoInstances();
    document.json["nodes"][0]["extensions"]["EXT_mesh_gpu_instancing"]["attributes"]["_ID"] =
        document.Accessor<std::uint32_t>({7, 8}, "SCALAR", 1);
    const Model model = document.Read();
    ASSERT_EQ(model.notes.All().size(), 1U);
    EXPECT_EQ(model.notes.All()[0].loss, "instance-attributes");
}

TEST(Instances, OfDifferentNumberAreRefused)
{
    GltfDocument document = TwoInstances();
    document.json["nodes"][0]["extensions"]["EXT_mesh_gpu_instancing"]["attributes"]["SCALE"] =
        document.Accessor<float>({1, 1, 1}, "VEC3", 3);
    EXPECT_EQ(document.Problem(),
              "nodes[0].extensions.EXT_mesh_gpu_instancing.attributes.SCALE: 1 elements, 2 expected");
}

}  // namespace
