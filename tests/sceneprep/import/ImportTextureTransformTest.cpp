#include <sceneprep/import/ImportTextureTransform.h>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/export/gltf/TextureTransform.h>
#include <sceneprep/import/ImportModel.h>
#include <support/SceneText.h>

#include <array>
#include <sstream>
#include <string>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;

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
    const SceneprepTests::TemporaryFolder folder;
    std::ostringstream out;
    Progress progress(out, false);
    Model model;
    ImportModel(folder.Write("a.gltf", gltf), model, progress);
    Importing::SceneContainer& scene = *model.scene;
    EXPECT_TRUE(model.notes.Empty()) << model.notes.All().front().text;
    EXPECT_EQ(scene.SurfaceLibrary.at(0).MapList.size(), 1U);
    return scene.SurfaceLibrary.at(0).MapList.at(0).GetMatrix();
}

double NumberIn(const Json& value, const char* key, int index, double otherwise)
{
    return value.contains(key) ? value[key][static_cast<std::size_t>(index)].get<double>() : otherwise;
}

class ImportTextureTransformTest : public testing::TestWithParam<Transform>
{};

TEST_P(ImportTextureTransformTest, EqualsTheTransformOfTheFile)
{
    const Transform& expected = GetParam();
    const Json value = Gltf::TextureTransform(MatrixIn(GltfWith(expected)));
    for (const int i : {0, 1})
    {
        const auto part = static_cast<std::size_t>(i);
        EXPECT_NEAR(NumberIn(value, "offset", i, 0), expected.offset[part], 2e-6);
        EXPECT_NEAR(NumberIn(value, "scale", i, 1), expected.scale[part], 2e-6);
    }
    EXPECT_NEAR(value.contains("rotation") ? value["rotation"].get<double>() : 0, expected.rotation, 2e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Transforms, ImportTextureTransformTest,
    testing::Values(Transform{"Identity", {0, 0}, 0, {1, 1}}, Transform{"Offset", {0.25, -0.5}, 0, {1, 1}},
                    Transform{"Scale", {0, 0}, 0, {2, 0.1}}, Transform{"Rotation", {0, 0}, 0.75, {1, 1}},
                    Transform{"Backwards", {0, 0}, -2.5, {1, 1}},
                    Transform{"RotationAndUnevenScale", {0, 0}, 1.25, {0.5, 3}},
                    Transform{"All", {0.125, 0.75}, -0.6, {4, 1.5}}, Transform{"Mirrored", {1, 0.5}, 0.3, {2, -1.5}}),
    [](const auto& chosen) { return chosen.param.name; });

TEST(ImportTextureTransform, OffsetsOfZeroAreExact)
{
    const D3DXMATRIX matrix = MatrixIn(GltfWith({"", {0, 0}, 0, {0.1, 0.7}}));
    EXPECT_EQ(matrix._41, 0);
    EXPECT_FALSE(Gltf::TextureTransform(matrix).contains("rotation"));
}

/// Coordinates rotate counterclockwise about the upper left corner of the image, which is (0, 1).
TEST(ImportTextureTransform, RotatesAboutTheUpperLeftCorner)
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

TEST(ImportTextureTransform, IgnoresTheIdentity)
{
    aiMaterial material;
    EXPECT_FALSE(FindTextureTransform(material, aiTextureType_DIFFUSE, 0));
    aiUVTransform transform;
    material.AddProperty(&transform, 1, AI_MATKEY_UVTRANSFORM(aiTextureType_DIFFUSE, 0));
    EXPECT_FALSE(FindTextureTransform(material, aiTextureType_DIFFUSE, 0));
    transform.mRotation = 1;
    material.AddProperty(&transform, 1, AI_MATKEY_UVTRANSFORM(aiTextureType_DIFFUSE, 1));
    EXPECT_EQ(FindTextureTransform(material, aiTextureType_DIFFUSE, 1)->mRotation, 1);
}

}  // namespace
