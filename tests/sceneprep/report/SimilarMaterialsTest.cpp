#include <sceneprep/report/SimilarMaterials.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// Returns a model with materials as a glTF file holds them.
Model WithMaterials(std::initializer_list<const char*> objects)
{
    Model model;
    for (const char* text : objects)
    {
        const Json object = Json::parse(text);
        Importing::Material material;
        material.SetName(object.value("name", ""));
        model.carried.materialOf.push_back({.material = static_cast<int>(model.carried.materials.size())});
        model.carried.materials.push_back(object);
        model.scene->MaterialLibrary.push_back(material);
    }
    return model;
}

std::vector<std::string> TextsOf(const Model& model)
{
    std::vector<int> all;
    for (std::size_t material = 0; material < model.scene->MaterialLibrary.size(); ++material)
        all.push_back(static_cast<int>(material));
    std::vector<std::string> texts;
    for (const SimilarMaterials& similar : FindSimilarMaterials(model, all))
        texts.push_back(similar.text);
    return texts;
}

TEST(SimilarMaterials, ReportTheValueThatDiffers)
{
    const Model model =
        WithMaterials({R"({"name":"Wood","pbrMetallicRoughness":{"roughnessFactor":0.5,"metallicFactor":0}})",
                       R"({"name":"Wood.001","pbrMetallicRoughness":{"roughnessFactor":0.52,"metallicFactor":0}})",
                       R"({"name":"Iron","pbrMetallicRoughness":{"roughnessFactor":0.4,"metallicFactor":1}})"});
    EXPECT_THAT(TextsOf(model), ElementsAre("materials 'Wood' and 'Wood.001' differ only in roughness: 0.5 and 0.52"));
    EXPECT_THAT(FindSimilarMaterials(model, {0, 1, 2})[0].materials, ElementsAre(0, 1));
    EXPECT_THAT(FindSimilarMaterials(model, {0, 2}), testing::IsEmpty());
}

TEST(SimilarMaterials, MayLackTheValue)
{
    EXPECT_THAT(TextsOf(WithMaterials({R"({"name":"A"})", R"({"name":"B","alphaCutoff":0.25})"})),
                ElementsAre("materials 'A' and 'B' differ only in alphaCutoff: its default and 0.25"));
}

TEST(SimilarMaterials, ComponentsOfColoursAreNumbers)
{
    const Model model =
        WithMaterials({R"({"name":"A","emissiveFactor":[1,0.5,0]})", R"({"name":"B","emissiveFactor":[1,0.75,0]})",
                       R"({"name":"C","emissiveFactor":[0,0,1]})", R"({"name":"D","emissiveFactor":[1,1,0]})",
                       R"({"name":"E","emissiveFactor":[1,0.25,0]})"});
    EXPECT_THAT(TextsOf(model),
                ElementsAre("4 materials differ only in emissive[1]: 'A' 0.5, 'B' 0.75, 'D' 1 and 1 more"));
}

TEST(SimilarMaterials, TexturesAreNotNumbers)
{
    EXPECT_THAT(TextsOf(WithMaterials({R"({"name":"A","normalTexture":{"index":0,"scale":1}})",
                                       R"({"name":"B","normalTexture":{"index":1,"scale":1}})",
                                       R"({"name":"C","normalTexture":{"index":1,"scale":2}})"})),
                ElementsAre("materials 'B' and 'C' differ only in normalTexture scale: 1 and 2"));
    EXPECT_THAT(TextsOf(WithMaterials({R"({"name":"A","alphaMode":"MASK"})", R"({"name":"B","alphaMode":"BLEND"})"})),
                ElementsAre());
}

TEST(SimilarMaterials, MayDifferInTheirNames)
{
    EXPECT_THAT(TextsOf(WithMaterials({R"({"name":"A","extras":{"id":1}})", R"({"name":"B"})"})),
                ElementsAre("materials 'A' and 'B' differ only in their names"));
}

TEST(SimilarMaterials, OfOtherFormatsHaveTheValuesOfTheContainer)
{
    Model model;
    for (const float opacity : {1.0F, 0.5F, 0.5F})
    {
        Importing::Material material;
        material.SetName("M" + std::to_string(model.scene->MaterialLibrary.size()));
        material.SetOpacity(opacity);
        model.scene->MaterialLibrary.push_back(material);
        Importing::Surface surface;
        surface.SetMaterialID(static_cast<int>(model.scene->SurfaceLibrary.size()));
        model.scene->SurfaceLibrary.push_back(surface);
    }
    Importing::Map map;
    map.SetTextureID(3);
    model.scene->SurfaceLibrary[2].MapList.push_back(map);  // the third has a texture and so is not similar
    EXPECT_THAT(TextsOf(model), ElementsAre("materials 'M0' and 'M1' differ only in opacity: 1 and 0.5"));
}

}  // namespace
