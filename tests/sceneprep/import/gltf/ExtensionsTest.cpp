#include <sceneprep/import/gltf/Extensions.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;

TEST(Extensions, UnknownOnesAreCarried)
{
    GltfDocument document = GltfDocument::Parse(R"({"extensionsRequired":["VENDOR_weather"],"extras":[1],
        "extensions":{"VENDOR_weather":{"rain":0.5}},"nodes":[{"extensions":{"VENDOR_weather":{"wet":true}}}]})");
    document.json["asset"] = Json::parse(R"({"version":"2.0","generator":"g","copyright":"c"})");
    const Model model = document.Read();
    EXPECT_EQ(model.carried.extensions.dump(), R"({"VENDOR_weather":{"rain":0.5}})");
    EXPECT_EQ(model.carried.extras.dump(), "[1]");
    EXPECT_EQ(model.carried.asset.dump(), R"({"copyright":"c"})");
    EXPECT_THAT(model.carried.required, ElementsAre("VENDOR_weather"));
    EXPECT_EQ(model.carried.nodes.at(0).object["extensions"].dump(), R"({"VENDOR_weather":{"wet":true}})");
}

TEST(Extensions, RequiredOnesOfGeometryHaveToBeKnown)
{
    GltfDocument document;
    document.AddTriangle()["extensions"]["VENDOR_curves"] = Json::object();
    EXPECT_EQ(document.Problem(), "");
    document.json["extensionsRequired"] = {"VENDOR_curves", "KHR_mesh_quantization"};
    EXPECT_EQ(document.Problem(), "meshes[0].primitives[0]: the required extension VENDOR_curves is not supported");
    document.Primitive().erase("extensions");
    EXPECT_EQ(document.Problem(), "");
    document.json["bufferViews"][0]["extensions"]["VENDOR_curves"] = Json::object();
    EXPECT_EQ(document.Problem(), "bufferViews[0]: the required extension VENDOR_curves is not supported");
}

TEST(Extensions, BufferViewsOfTheDocumentAreCarried)
{
    GltfDocument document;
    document.View("unused");
    const int values = document.View("values");
    document.json["extensions"]["EXT_structural_metadata"]["propertyTables"] = {
        {{"count", 1}, {"properties", {{"height", {{"values", values}}}}}}};
    const Model model = document.Read();
    ASSERT_EQ(model.carried.blobs.size(), 1U);
    EXPECT_EQ(model.carried.blobs[0].size(), 6U);
    EXPECT_EQ(model.carried.extensions["EXT_structural_metadata"]["propertyTables"][0]["properties"].dump(),
              R"({"height":{"values":0}})");
    document.json["extensions"]["EXT_structural_metadata"]["propertyTables"][0]["properties"]["height"]["values"] = 8;
    EXPECT_EQ(document.Problem(), "extensions: 8 is not below 2");
}

}  // namespace
