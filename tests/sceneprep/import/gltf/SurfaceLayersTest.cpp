#include <sceneprep/import/gltf/SurfaceLayers.h>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/assimp/Roughness.h>
#include <sceneprep/export/gltf/TextureTransform.h>

#include <sceneprep/import/gltf/GltfDocument.h>
#include <array>

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
    document.json["materials"] = Json::array({Json::parse(material)});
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

struct Transform
{
    const char* name;
    std::array<double, 2> offset;
    double rotation;
    std::array<double, 2> scale;
};

/// A triangle whose base colour texture has a texture transform.
std::string GltfWith(const Transform& transform)
{
    return fmt::format(
        R"({{"asset":{{"version":"2.0"}},"scene":0,"scenes":[{{"nodes":[0]}}],"nodes":[{{"name":"Tri","mesh":0}}],
"extensionsUsed":["KHR_texture_transform"],
"meshes":[{{"name":"Tri","primitives":[{{"attributes":{{"POSITION":0}},"material":0}}]}}],
"materials":[{{"pbrMetallicRoughness":{{"metallicFactor":0,"baseColorTexture":{{"index":0,"extensions":{{"KHR_texture_transform":
{{"offset":[{},{}],"rotation":{},"scale":[{},{}]}}}}}}}}}}],"textures":[{{"source":0}}],"images":[{{"uri":"wood.png"}}],
"accessors":[{{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]}}],
"bufferViews":[{{"buffer":0,"byteLength":36}}],
"buffers":[{{"byteLength":36,"uri":"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}}]}})",
        transform.offset[0], transform.offset[1], transform.rotation, transform.scale[0], transform.scale[1]);
}

D3DXMATRIX MatrixIn(const std::string& gltf)
{
    const TemporaryFolder folder;
    const Model model = GltfDocument::ReadFile(folder.Write("a.gltf", gltf));
    Importing::SceneContainer& scene = *model.scene;
    EXPECT_TRUE(model.notes.Empty()) << model.notes.All().front().text;
    EXPECT_EQ(scene.SurfaceLibrary.at(0).MapList.size(), 1U);
    return scene.SurfaceLibrary.at(0).MapList.at(0).GetMatrix();
}

double NumberIn(const Json& value, const char* key, int index, double otherwise)
{
    return value.contains(key) ? value[key][static_cast<std::size_t>(index)].get<double>() : otherwise;
}

class TextureTransformTest : public testing::TestWithParam<Transform>
{};

TEST_P(TextureTransformTest, EqualsTheTransformOfTheFile)
{
    const Transform& expected = GetParam();
    const Json value = Sceneprep::Gltf::TextureTransform(MatrixIn(GltfWith(expected)));
    for (const int i : {0, 1})
    {
        const auto part = static_cast<std::size_t>(i);
        EXPECT_NEAR(NumberIn(value, "offset", i, 0), expected.offset[part], 2e-6);
        EXPECT_NEAR(NumberIn(value, "scale", i, 1), expected.scale[part], 2e-6);
    }
    EXPECT_NEAR(value.contains("rotation") ? value["rotation"].get<double>() : 0, expected.rotation, 2e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Transforms, TextureTransformTest,
    testing::Values(Transform{"Identity", {0, 0}, 0, {1, 1}}, Transform{"Offset", {0.25, -0.5}, 0, {1, 1}},
                    Transform{"Scale", {0, 0}, 0, {2, 0.1}}, Transform{"Rotation", {0, 0}, 0.75, {1, 1}},
                    Transform{"Backwards", {0, 0}, -2.5, {1, 1}},
                    Transform{"RotationAndUnevenScale", {0, 0}, 1.25, {0.5, 3}},
                    Transform{"All", {0.125, 0.75}, -0.6, {4, 1.5}}, Transform{"Mirrored", {1, 0.5}, 0.3, {2, -1.5}}),
    [](const auto& chosen) { return chosen.param.name; });

TEST(SurfaceLayers, OffsetsOfTransformsOfZeroAreExact)
{
    const D3DXMATRIX matrix = MatrixIn(GltfWith({"", {0, 0}, 0, {0.1, 0.7}}));
    EXPECT_EQ(matrix._41, 0);
    EXPECT_FALSE(Sceneprep::Gltf::TextureTransform(matrix).contains("rotation"));
}

/// Coordinates rotate counterclockwise about the upper left corner of the image, which is (0, 1).
TEST(SurfaceLayers, TransformsRotateAboutTheUpperLeftCorner)
{
    const D3DXMATRIX matrix = MatrixIn(GltfWith({"", {0, 0}, 1.5707963267948966, {1, 1}}));
    const D3DXVECTOR2 corner(0, 1);
    const D3DXVECTOR2 right(1, 1);
    D3DXVECTOR2 result;
    D3DXVec2TransformCoord(&result, &corner, &matrix);
    EXPECT_NEAR(result.x, 0, 1e-6F);
    EXPECT_NEAR(result.y, 1, 1e-6F);
    D3DXVec2TransformCoord(&result, &right, &matrix);
    EXPECT_NEAR(result.x, 0, 1e-6F);
    EXPECT_NEAR(result.y, 2, 1e-6F);
}

}  // namespace
