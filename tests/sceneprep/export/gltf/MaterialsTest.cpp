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

    Json Write(Surface surface, std::size_t texCoordSets = 2) { return converter_.Convert(surface, texCoordSets); }

    Json Write(const Material& material)
    {
        scene_.MaterialLibrary.push_back(material);
        Surface surface;
        surface.SetMaterialID(static_cast<int>(scene_.MaterialLibrary.size() - 1));
        return Write(surface);
    }

    Json WriteMapped(const std::vector<std::string>& types, const D3DXMATRIX* matrix = nullptr)
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

    Model model_;
    Importing::SceneContainer& scene_ = *model_.scene;
    WriteOptions options_;
    Document document_;
    Buffers buffers_{document_};
    ImageWriter images_{options_, buffers_, document_};
    TextureWriter textures_{model_, images_, document_};
    MaterialConverter converter_{model_, textures_};
};

TEST_F(GltfMaterials, ColourOpacityAndPowerBecomeANonMetallicMaterial)
{
    Material glass;
    glass.SetName("Glass");
    glass.SetDiffuse({0.25F, 0.5F, 0.75F, 0.1F});
    glass.SetOpacity(0.5F);
    glass.SetSpecularPower(30);
    const Json written = Write(glass);
    EXPECT_EQ(written["name"], "Glass");
    EXPECT_EQ(written["pbrMetallicRoughness"]["baseColorFactor"], Json::array({0.25, 0.5, 0.75, 0.5}));
    EXPECT_EQ(written["pbrMetallicRoughness"]["metallicFactor"], 0);
    EXPECT_FLOAT_EQ(written["pbrMetallicRoughness"]["roughnessFactor"].get<float>(), 0.5F);
    EXPECT_EQ(written["alphaMode"], "BLEND");
    EXPECT_FALSE(written.contains("extensions"));
}

TEST_F(GltfMaterials, AnOpaqueMaterialDoesNotBlend) { EXPECT_FALSE(Write(Material()).contains("alphaMode")); }

TEST_F(GltfMaterials, ASurfaceWithoutMaterialGetsTheDefaultOne)
{
    EXPECT_EQ(Write(Surface())["name"], Material().GetName());
}

TEST_F(GltfMaterials, ColoursAreClamped)
{
    Material odd;
    odd.SetDiffuse({-1, 2, std::numeric_limits<float>::quiet_NaN(), 1});
    EXPECT_EQ(Write(odd)["pbrMetallicRoughness"]["baseColorFactor"], Json::array({0, 1, 0, 1}));
}

TEST_F(GltfMaterials, EmissionAboveOneHasAStrength)
{
    Material lamp;
    lamp.SetEmissive({4, 2, 0, 1});
    const Json written = Write(lamp);
    EXPECT_EQ(written["emissiveFactor"], Json::array({1, 0.5, 0}));
    EXPECT_EQ(written["extensions"]["KHR_materials_emissive_strength"]["emissiveStrength"], 4);
}

TEST_F(GltfMaterials, ASpecularColourThatIsNotBlackOrWhiteIsKept)
{
    Material grey;
    grey.SetSpecular({1, 1, 1, 1});
    EXPECT_FALSE(Write(grey).contains("extensions"));
    Material gold;
    gold.SetSpecular({1, 0.5F, 0, 1});
    EXPECT_EQ(Write(gold)["extensions"]["KHR_materials_specular"]["specularColorFactor"], Json::array({1, 0.5, 0}));
}

TEST_F(GltfMaterials, LayersBecomeTexturesOfTheMaterial)
{
    const Json written = WriteMapped({"diffuse", "normal"});
    EXPECT_EQ(written["pbrMetallicRoughness"]["baseColorTexture"]["index"], 0);
    EXPECT_EQ(written["pbrMetallicRoughness"]["baseColorTexture"]["texCoord"], 1);
    EXPECT_EQ(written["normalTexture"]["index"], 1);
    EXPECT_EQ(written["normalTexture"]["scale"], 0.5);
    EXPECT_TRUE(converter_.DroppedLayers().empty());
}

TEST_F(GltfMaterials, AMetallicRoughnessLayerSetsBothFactorsToOne)
{
    const Json written = WriteMapped({"metallic-roughness"});
    EXPECT_EQ(written["pbrMetallicRoughness"]["metallicRoughnessTexture"]["index"], 0);
    EXPECT_EQ(written["pbrMetallicRoughness"]["metallicFactor"], 1);
    EXPECT_EQ(written["pbrMetallicRoughness"]["roughnessFactor"], 1);
}

TEST_F(GltfMaterials, AnEmissiveLayerMakesABlackFactorWhite)
{
    EXPECT_EQ(WriteMapped({"emissive"})["emissiveFactor"], Json::array({1, 1, 1}));
    EXPECT_EQ(WriteMapped({"lightmap"})["occlusionTexture"]["strength"], 0.5);
}

TEST_F(GltfMaterials, LayersThatTheFormatDoesNotSupportAreReported)
{
    WriteMapped({"diffuse", "base-color"});
    WriteMapped({"displacement"});
    EXPECT_EQ(converter_.DroppedLayers(), (std::set<std::string>{"base-color", "displacement"}));
}

TEST_F(GltfMaterials, ALayerNeedsTheTextureCoordinatesThatItNames)
{
    Surface surface;
    surface.MapList.resize(1);
    surface.MapList[0].SetTextureID(0);
    surface.MapList[0].SetType("diffuse");
    surface.MapList[0].SetUVSetIndex(1);
    EXPECT_FALSE(Write(surface, 1)["pbrMetallicRoughness"].contains("baseColorTexture"));
    EXPECT_EQ(converter_.DroppedLayers(), (std::set<std::string>{"diffuse"}));
    EXPECT_TRUE(Write(surface, 2)["pbrMetallicRoughness"].contains("baseColorTexture")) << "another mesh has them";
}

TEST_F(GltfMaterials, ImagesOfDroppedLayersAreNotWritten)
{
    WriteMapped({"displacement"});
    EXPECT_TRUE(document_.images.empty());
}

TEST_F(GltfMaterials, ASecondLayerOfATypeIsDropped)
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
    EXPECT_EQ(Write(surface)["normalTexture"]["scale"], 0.25);
}

TEST_F(GltfMaterials, NanAmountsAreReplacedByTheDefault)
{
    Surface surface;
    surface.MapList.resize(1);
    surface.MapList[0].SetTextureID(0);
    surface.MapList[0].SetType("normal");
    surface.MapList[0].SetAmount(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(Write(surface)["normalTexture"]["scale"], 1);
}

TEST_F(GltfMaterials, ALayersMatrixBecomesATransform)
{
    D3DXMATRIX twice;
    D3DXMatrixScaling(&twice, 2, 2, 1);
    const Json written = WriteMapped({"diffuse"}, &twice);
    EXPECT_TRUE(written["pbrMetallicRoughness"]["baseColorTexture"]["extensions"].contains("KHR_texture_transform"));
}

}  // namespace
