#include <sceneprep/import/MaterialPatch.h>

#include <assimp/GltfMaterial.h>
#include <gtest/gtest.h>

#include <cmath>

namespace
{

using Sceneprep::Json;
using Sceneprep::MaterialPatch;

template <typename Value>
void Set(aiMaterial& material, const Value& value, const char* key, unsigned type, unsigned index)
{
    material.AddProperty(&value, 1, key, type, index);
}

TEST(MaterialPatch, IsEmptyForAPlainMaterial) { EXPECT_EQ(MaterialPatch(aiMaterial()), Json::object()); }

TEST(MaterialPatch, HoldsDoubleSidednessOfAnyType)
{
    aiMaterial number;
    Set(number, 1, AI_MATKEY_TWOSIDED);
    EXPECT_EQ(MaterialPatch(number), Json::parse(R"({"doubleSided": true})"));
    aiMaterial off;
    Set(off, 0, AI_MATKEY_TWOSIDED);
    EXPECT_EQ(MaterialPatch(off), Json::object());
}

TEST(MaterialPatch, HoldsMetalnessAndRoughnessWithinTheirRange)
{
    aiMaterial material;
    Set(material, 0.5F, AI_MATKEY_METALLIC_FACTOR);
    Set(material, 3.0F, AI_MATKEY_ROUGHNESS_FACTOR);
    EXPECT_EQ(MaterialPatch(material),
              Json::parse(R"({"pbrMetallicRoughness": {"metallicFactor": 0.5, "roughnessFactor": 1.0}})"));
}

TEST(MaterialPatch, DropsFactorsThatAreNaN)
{
    aiMaterial material;
    Set(material, std::nanf(""), AI_MATKEY_METALLIC_FACTOR);
    EXPECT_EQ(MaterialPatch(material), Json::object());
}

TEST(MaterialPatch, HoldsCutOutsWithTheirThreshold)
{
    aiMaterial material;
    const aiString mode("MASK");
    material.AddProperty(&mode, AI_MATKEY_GLTF_ALPHAMODE);
    Set(material, 0.25F, AI_MATKEY_GLTF_ALPHACUTOFF);
    EXPECT_EQ(MaterialPatch(material), Json::parse(R"({"alphaMode": "MASK", "alphaCutoff": 0.25})"));
}

TEST(MaterialPatch, HoldsUnlitShading)
{
    aiMaterial material;
    Set(material, static_cast<int>(aiShadingMode_NoShading), AI_MATKEY_SHADING_MODEL);
    EXPECT_EQ(MaterialPatch(material), Json::parse(R"({"extensions": {"KHR_materials_unlit": {}}})"));
}

TEST(MaterialPatch, HoldsLayersThatHaveAnEffect)
{
    aiMaterial material;
    Set(material, 0.5F, AI_MATKEY_CLEARCOAT_FACTOR);
    Set(material, 0.125F, AI_MATKEY_CLEARCOAT_ROUGHNESS_FACTOR);
    Set(material, 0.0F, AI_MATKEY_TRANSMISSION_FACTOR);
    const aiColor3D color(1, 0.5F, 0);
    material.AddProperty(&color, 1, AI_MATKEY_SHEEN_COLOR_FACTOR);
    EXPECT_EQ(MaterialPatch(material), Json::parse(R"({"extensions": {
        "KHR_materials_clearcoat": {"clearcoatFactor": 0.5, "clearcoatRoughnessFactor": 0.125},
        "KHR_materials_sheen": {"sheenColorFactor": [1.0, 0.5, 0.0]}}})"));
}

}  // namespace
