#include <sceneprep/import/gltf/Meshes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;

TEST(Meshes, AreSharedByNodes)
{
    GltfDocument document;
    document.AddTriangle();
    document.json["nodes"].push_back({{"mesh", 0}});
    document.json["scenes"][0]["nodes"] = {0, 1};
    document.json["meshes"][0]["extras"] = {{"targetNames", {"a"}}};
    const Model model = document.Read();
    ASSERT_EQ(model.scene->GeometryLibrary.size(), 1U);
    EXPECT_EQ(model.scene->SurfaceLibrary.size(), 2U);
    EXPECT_EQ(model.scene->SurfaceLibrary.at(1).GetGeometryID(), 0);
    EXPECT_THAT(model.supplement.meshKeys, ElementsAre(0));
    EXPECT_EQ(model.carried.meshOf.at(0).mesh, 0);
    EXPECT_FALSE(model.carried.meshOf.at(0).primitive);
    EXPECT_EQ(model.carried.meshes.at(0).dump(), R"({"name":"Mesh","extras":{"targetNames":["a"]}})");
    EXPECT_TRUE(model.supplement.pinnedMeshes.empty());
}

TEST(Meshes, WithMorphTargetsArePinnedAndCarried)
{
    GltfDocument document;
    document.AddTriangle();
    const int moved = document.Accessor<std::int8_t>({1, 0, 0, 0, 0, 0, 0, 0, 127}, "VEC3", 3, {{"normalized", true}});
    document.Primitive()["targets"] = {{{"POSITION", moved}}};
    document.Primitive()["indices"] = document.Accessor<std::uint8_t>({0, 1, 2}, "SCALAR", 1);
    const Model model = document.Read();
    EXPECT_THAT(model.supplement.pinnedMeshes, ElementsAre(true));
    const CarriedPrimitive& carried = model.carried.meshOf.at(0).primitive.value();
    EXPECT_EQ(carried.mode, 4);
    ASSERT_EQ(carried.targets.size(), 1U);
    EXPECT_EQ(carried.targets[0].at("POSITION").componentType, 5120);
    EXPECT_THAT(carried.indices->bytes, ElementsAre(0, 1, 2));
    EXPECT_EQ(carried.attributes.at("POSITION").bytes.size(), 36U);
    EXPECT_EQ(model.scene->GeometryLibrary.at(0).IndexArray.size(), 3U);
}

TEST(Meshes, OfPointsAndLinesArePinnedAndCarried)
{
    for (int mode = 0; mode < 7; ++mode)
    {
        GltfDocument document;
        document.AddTriangle()["mode"] = mode;
        const Model model = document.Read();
        EXPECT_EQ(model.carried.meshOf.at(0).primitive.has_value(), mode < 4) << mode;
        EXPECT_EQ(!model.supplement.pinnedMeshes.empty(), mode < 4) << mode;
    }
}

TEST(Meshes, WithExtensionsThatReferToAccessorsArePinned)
{
    GltfDocument document;
    document.AddTriangle();
    const int merged = document.Accessor<std::uint32_t>({1, 2}, "SCALAR", 1);
    document.json["meshes"][0]["extensions"]["EXT_mesh_manifold"] = {{"mergeIndices", merged}};
    const Model model = document.Read();
    EXPECT_THAT(model.supplement.pinnedMeshes, ElementsAre(true));
    ASSERT_EQ(model.carried.accessors.size(), 1U);
    EXPECT_EQ(model.carried.accessors[0].count, 2U);
    EXPECT_EQ(model.carried.meshes.at(0)["extensions"].dump(), R"({"EXT_mesh_manifold":{"mergeIndices":0}})");
}

TEST(Meshes, PrimitivesKeepTheirExtensions)
{
    GltfDocument document;
    document.AddTriangle()["extensions"] = {{"EXT_mesh_features", {{"featureIds", {{{"attribute", 0}}}}}}};
    const Model model = document.Read();
    EXPECT_EQ(model.carried.materialOf.at(0).primitive.dump(),
              R"({"extensions":{"EXT_mesh_features":{"featureIds":[{"attribute":0}]}}})");
    EXPECT_TRUE(model.supplement.pinnedMeshes.empty());
}

TEST(Meshes, WithoutANameHaveNone)
{
    GltfDocument document;
    document.AddTriangle();
    document.json["meshes"][0].erase("name");
    const Model model = document.Read();
    EXPECT_EQ(model.scene->GeometryLibrary.at(0).GetName(), "");
    document.json["meshes"][0]["name"] = 7;
    EXPECT_EQ(document.Problem(), "meshes[0].name: 7 is not a string");
}

TEST(Meshes, InvalidReferencesAreRefused)
{
    EXPECT_EQ(GltfDocument::Parse(R"({"nodes":[{"mesh":3}]})").Problem(), "nodes[0].mesh: 3 is not below 0");
    EXPECT_EQ(GltfDocument::Parse(R"({"nodes":[{"mesh":0}],"meshes":[{}]})").Problem(),
              "meshes[0].primitives: is missing");
    EXPECT_EQ(GltfDocument::Parse(R"({"nodes":[{"mesh":0}],"meshes":[7]})").Problem(), "meshes[0]: 7 is not an object");
}

TEST(Meshes, ThatNoNodeUsesAreReported)
{
    GltfDocument document;
    document.AddTriangle();
    document.json["meshes"].push_back(document.json["meshes"][0]);
    const Model model = document.Read();
    EXPECT_EQ(model.scene->GeometryLibrary.size(), 1U);
    ASSERT_EQ(model.notes.All().size(), 1U);
    EXPECT_EQ(model.notes.All()[0].text, "dropped meshes that no node of the scene uses (1)");
}

}  // namespace
