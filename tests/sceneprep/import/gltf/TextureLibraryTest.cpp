#include <sceneprep/import/gltf/TextureLibrary.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;

TEST(TextureLibrary, HasEachImageOnce)
{
    GltfDocument document;
    document.AddTriangle()["material"] = 0;
    document.json.update(Json::parse(R"({
        "images":[{"uri":"Wood.PNG"},{"uri":"data:image/png;base64,YWJj"},{"uri":"b.ktx2"}],
        "textures":[{"source":0},{"source":0},{"source":1},{"extensions":{"KHR_texture_basisu":{"source":2}}},{}],
        "materials":[{"normalTexture":{"index":0},"emissiveTexture":{"index":2},"occlusionTexture":{"index":3},
        "pbrMetallicRoughness":{"baseColorTexture":{"index":1},"metallicRoughnessTexture":{"index":4}}}]})"));
    const Model model = document.Read();
    EXPECT_THAT(model.scene->TextureLibrary, ElementsAre("wood.png", "*0", "b.ktx2"));
    EXPECT_EQ(model.textures.spelling.at("wood.png"), "Wood.PNG");
    std::vector<std::string> layers;
    for (Importing::Map& map : model.scene->SurfaceLibrary.at(0).MapList)
        layers.push_back(map.GetType() + std::to_string(map.GetTextureID()));
    EXPECT_THAT(layers, ElementsAre("diffuse0", "emissive1", "normal0", "lightmap2"));
}

TEST(TextureLibrary, RefusesInvalidReferences)
{
    GltfDocument document;
    document.AddTriangle()["material"] = 0;
    document.json.update(Json::parse(R"({"textures":[{"source":5}],"materials":[{"normalTexture":{"index":0}}]})"));
    EXPECT_EQ(document.Problem(), "textures[0].source: 5 is not below 0");
    document.json["materials"][0]["normalTexture"]["index"] = 1;
    EXPECT_EQ(document.Problem(), "materials[0].normalTexture.index: 1 is not below 1");
}

}  // namespace
