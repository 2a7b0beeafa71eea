#include <sceneprep/import/gltf/SurfaceLayers.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/assimp/Roughness.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

Importing::Material Convert(const std::string& text)
{
    const Json json = Json::parse(text);
    return ConvertMaterial(Field(json, {}));
}

TEST(SurfaceLayers, MaterialsHaveTheirFactors)
{
    Importing::Material material = Convert(R"({"name":"Red","alphaMode":"BLEND","emissiveFactor":[0,0,0.5],
        "pbrMetallicRoughness":{"baseColorFactor":[1,0.5,0,0.25],"roughnessFactor":0.5}})");
    EXPECT_EQ(material.GetName(), "Red");
    EXPECT_EQ(material.GetDiffuse().g, 0.5F);
    EXPECT_EQ(material.GetDiffuse().a, 1);
    EXPECT_EQ(material.GetOpacity(), 0.25F);
    EXPECT_EQ(material.GetEmissive().b, 0.5F);
    EXPECT_EQ(material.GetSpecularPower(), PowerOf(0.5F));
}

TEST(SurfaceLayers, OnlyBlendingMakesTransparent)
{
    const std::string factor = R"("pbrMetallicRoughness":{"baseColorFactor":[1,1,1,0.25]}})";
    EXPECT_EQ(Convert("{" + factor).GetOpacity(), 1);
    EXPECT_EQ(Convert(R"({"alphaMode":"MASK",)" + factor).GetOpacity(), 1);
}

TEST(SurfaceLayers, SpecularGlossinessReplacesMetallicRoughness)
{
    Importing::Material material = Convert(R"({"pbrMetallicRoughness":{"baseColorFactor":[0,0,0,1]},
        "extensions":{"KHR_materials_pbrSpecularGlossiness":{"diffuseFactor":[0,1,0,1],"specularFactor":[0.5,0,0],
        "glossinessFactor":0.25}}})");
    EXPECT_EQ(material.GetDiffuse().g, 1);
    EXPECT_EQ(material.GetSpecular().r, 0.5F);
    EXPECT_EQ(material.GetSpecularPower(), PowerOf(0.75F));
}

std::vector<Importing::Map> LayersOf(const std::string& material)
{
    GltfDocument document;
    document.AddTriangle()["material"] = 0;
    document.json.update(Json::parse(R"({"images":[{"uri":"a.png"}],"textures":[{"source":0}]})"));
    document.json["materials"] = {Json::parse(material)};
    return document.Read().scene->SurfaceLibrary.at(0).MapList;
}

TEST(SurfaceLayers, LayersHaveSetAndAmount)
{
    std::vector<Importing::Map> layers = LayersOf(
        R"({"normalTexture":{"index":0,"texCoord":2,"scale":0.5},"occlusionTexture":{"index":0,"strength":0.25}})");
    ASSERT_EQ(layers.size(), 2U);
    EXPECT_EQ(layers[0].GetType(), "normal");
    EXPECT_EQ(layers[0].GetUVSetIndex(), 2U);
    EXPECT_EQ(layers[0].GetAmount(), 0.5F);
    EXPECT_EQ(layers[1].GetType(), "lightmap");
    EXPECT_EQ(layers[1].GetAmount(), 0.25F);
}

TEST(SurfaceLayers, TransformsApplyToCoordinatesThatCountUpwards)
{
    std::vector<Importing::Map> layers = LayersOf(R"({"emissiveTexture":{"index":0,"extensions":{
        "KHR_texture_transform":{"offset":[0.25,0.5],"rotation":1.5707963267948966,"scale":[2,4],"texCoord":1}}}})");
    ASSERT_EQ(layers.size(), 1U);
    EXPECT_EQ(layers[0].GetUVSetIndex(), 1U);
    // (u, v) = (0.5, 0.25) of the file: u' = 4 * 0.25 + 0.25, v' = -2 * 0.5 + 0.5.
    D3DXVECTOR3 coordinates(0.5F, 1 - 0.25F, 0);
    const D3DXMATRIX matrix = layers[0].GetMatrix();
    D3DXVec3TransformCoord(&coordinates, &coordinates, &matrix);
    EXPECT_NEAR(coordinates.x, 1.25F, 1e-6);
    EXPECT_NEAR(1 - coordinates.y, -0.5F, 1e-6);
}

}  // namespace
