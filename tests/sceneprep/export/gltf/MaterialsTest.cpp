#include <sceneprep/export/gltf/Materials.h>

#include <gtest/gtest.h>
#include <sceneprep/assimp/Roughness.h>

#include <limits>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using Importing::Map;
using Importing::Material;
using Importing::Surface;

class GltfMaterials : public testing::Test
{
protected:
    GltfMaterials() { scene_.TextureLibrary = {"a.png", "b.png"}; }

    const tinygltf::Material& Write(Surface surface)
    {
        return model_.materials.at(static_cast<std::size_t>(writer_.Find(surface, twoSets_)));
    }

    const tinygltf::Material& Write(const Material& material)
    {
        scene_.MaterialLibrary.push_back(material);
        Surface surface;
        surface.SetMaterialID(static_cast<int>(scene_.MaterialLibrary.size() - 1));
        return Write(surface);
    }

    const tinygltf::Material& WriteMapped(const std::vector<std::string>& types, const D3DXMATRIX* matrix = nullptr)
    {
        Surface surface;
        for (const std::string& type : types)
        {
            Map map;
            map.SetTextureID(static_cast<int>(surface.MapList.size()));
            map.SetType(type);
            map.SetUVSetIndex(1);
            map.SetAmount(0.5F);
            if (matrix != nullptr)
                map.SetMatrix(*matrix);
            surface.MapList.push_back(map);
        }
        return Write(surface);
    }

    Importing::SceneContainer scene_;
    Textures textures_;
    MeshArrays twoSets_ = {.attributes = {{"TEXCOORD_0", 0}, {"TEXCOORD_1", 1}}};
    tinygltf::Model model_;
    Buffers buffers_{model_};
    ImageWriter images_{scene_, textures_, "a", true, buffers_, model_};
    MaterialWriter writer_{scene_, images_, model_};
};

TEST_F(GltfMaterials, ColourOpacityAndPowerBecomeAMaterialThatIsNoMetal)
{
    Material glass;
    glass.SetName("Glass");
    glass.SetDiffuse({0.25F, 0.5F, 0.75F, 0.1F});
    glass.SetOpacity(0.5F);
    glass.SetSpecularPower(30);
    const tinygltf::Material& written = Write(glass);
    EXPECT_EQ(written.name, "Glass");
    EXPECT_EQ(written.pbrMetallicRoughness.baseColorFactor, (std::vector<double>{0.25, 0.5, 0.75, 0.5}));
    EXPECT_EQ(written.pbrMetallicRoughness.metallicFactor, 0);
    EXPECT_FLOAT_EQ(static_cast<float>(written.pbrMetallicRoughness.roughnessFactor), 0.5F);
    EXPECT_EQ(written.alphaMode, "BLEND");
    EXPECT_TRUE(written.extensions.empty());
}

TEST_F(GltfMaterials, AnOpaqueMaterialDoesNotBlend) { EXPECT_EQ(Write(Material()).alphaMode, "OPAQUE"); }

TEST_F(GltfMaterials, WithoutAMaterialTheStandardOneIsWritten)
{
    EXPECT_EQ(Write(Surface()).name, Material().GetName());
}

TEST_F(GltfMaterials, ColoursOutsideTheRangeAreTheNearestInside)
{
    Material odd;
    odd.SetDiffuse({-1, 2, std::numeric_limits<float>::quiet_NaN(), 1});
    EXPECT_EQ(Write(odd).pbrMetallicRoughness.baseColorFactor, (std::vector<double>{0, 1, 0, 1}));
}

TEST_F(GltfMaterials, EmissionAboveOneHasAStrength)
{
    Material lamp;
    lamp.SetEmissive({4, 2, 0, 1});
    const tinygltf::Material& written = Write(lamp);
    EXPECT_EQ(written.emissiveFactor, (std::vector<double>{1, 0.5, 0}));
    EXPECT_EQ(written.extensions.at("KHR_materials_emissive_strength").Get("emissiveStrength").GetNumberAsDouble(), 4);
    EXPECT_EQ(model_.extensionsUsed, std::vector<std::string>{"KHR_materials_emissive_strength"});
}

TEST_F(GltfMaterials, ASpecularColourThatSaysMoreIsKept)
{
    Material grey;
    grey.SetSpecular({1, 1, 1, 1});
    EXPECT_TRUE(Write(grey).extensions.empty());
    Material gold;
    gold.SetSpecular({1, 0.5F, 0, 1});
    const tinygltf::Value factor = Write(gold).extensions.at("KHR_materials_specular").Get("specularColorFactor");
    EXPECT_EQ(factor.Get(0).GetNumberAsDouble(), 1);
    EXPECT_EQ(factor.Get(1).GetNumberAsDouble(), 0.5);
    EXPECT_EQ(factor.Get(2).GetNumberAsDouble(), 0);
}

TEST_F(GltfMaterials, LayersGoWhereTheFormatHasAPlace)
{
    const tinygltf::Material& written = WriteMapped({"diffuse", "normal"});
    EXPECT_EQ(written.pbrMetallicRoughness.baseColorTexture.index, 0);
    EXPECT_EQ(written.pbrMetallicRoughness.baseColorTexture.texCoord, 1);
    EXPECT_EQ(written.normalTexture.index, 1);
    EXPECT_EQ(written.normalTexture.scale, 0.5);
    EXPECT_TRUE(writer_.LayersLeftOut().empty());
}

TEST_F(GltfMaterials, ALayerOfMetalnessAndRoughnessDecidesAlone)
{
    const tinygltf::Material& written = WriteMapped({"metallic-roughness"});
    EXPECT_EQ(written.pbrMetallicRoughness.metallicRoughnessTexture.index, 0);
    EXPECT_EQ(written.pbrMetallicRoughness.metallicFactor, 1);
    EXPECT_EQ(written.pbrMetallicRoughness.roughnessFactor, 1);
}

TEST_F(GltfMaterials, ALayerOfLightShowsOnABlackMaterialToo)
{
    EXPECT_EQ(WriteMapped({"emissive"}).emissiveFactor, (std::vector<double>{1, 1, 1}));
    EXPECT_EQ(WriteMapped({"lightmap"}).occlusionTexture.strength, 0.5);
}

TEST_F(GltfMaterials, LayersWithoutAPlaceAreTold)
{
    WriteMapped({"diffuse", "base-color"});
    WriteMapped({"displacement"});
    EXPECT_EQ(writer_.LayersLeftOut(), (std::set<std::string>{"base-color", "displacement"}));
}

TEST_F(GltfMaterials, ALayerNeedsTheTextureCoordinatesThatItNames)
{
    Surface surface;
    surface.MapList.resize(1);
    surface.MapList[0].SetTextureID(0);
    surface.MapList[0].SetType("diffuse");
    surface.MapList[0].SetUVSetIndex(1);
    const MeshArrays oneSet = {.attributes = {{"TEXCOORD_0", 0}}};
    EXPECT_EQ(writer_.Find(surface, oneSet), 0);
    EXPECT_EQ(model_.materials[0].pbrMetallicRoughness.baseColorTexture.index, -1);
    EXPECT_EQ(writer_.LayersLeftOut(), (std::set<std::string>{"diffuse"}));
    EXPECT_EQ(writer_.Find(surface, twoSets_), 1) << "another mesh has them";
}

TEST_F(GltfMaterials, PicturesOfLayersWithoutAPlaceAreNotWritten)
{
    WriteMapped({"displacement"});
    EXPECT_TRUE(model_.images.empty());
}

TEST_F(GltfMaterials, ASecondLayerLeavesTheFirstOneAsItIs)
{
    Surface surface;
    for (const float amount : {0.25F, 0.75F})
    {
        Map map;
        map.SetTextureID(0);
        map.SetType("normal");
        map.SetAmount(amount);
        surface.MapList.push_back(map);
    }
    EXPECT_EQ(Write(surface).normalTexture.scale, 0.25);
}

TEST_F(GltfMaterials, AmountsThatAreNoNumbersAreTheUsualOnes)
{
    Surface surface;
    surface.MapList.resize(1);
    surface.MapList[0].SetTextureID(0);
    surface.MapList[0].SetType("normal");
    surface.MapList[0].SetAmount(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(Write(surface).normalTexture.scale, 1);
}

TEST_F(GltfMaterials, ALayersMatrixBecomesATransform)
{
    D3DXMATRIX twice;
    D3DXMatrixScaling(&twice, 2, 2, 1);
    const tinygltf::Material& written = WriteMapped({"diffuse"}, &twice);
    EXPECT_EQ(written.pbrMetallicRoughness.baseColorTexture.extensions.count("KHR_texture_transform"), 1U);
    EXPECT_EQ(model_.extensionsUsed, std::vector<std::string>{"KHR_texture_transform"});
}

TEST_F(GltfMaterials, EqualMaterialsWithEqualLayersAreOne)
{
    WriteMapped({"diffuse"});
    WriteMapped({"diffuse"});
    WriteMapped({"normal"});
    EXPECT_EQ(model_.materials.size(), 2U);
}

}  // namespace
