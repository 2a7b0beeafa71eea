#include <sceneprep/export/gltf/MaterialWriter.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/Models.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using Importing::Surface;

class GltfMaterialWriter : public testing::Test
{
protected:
    /// Adds a material to the container, with its carried data.
    Surface AddMaterial(const std::string& name, CarriedMaterial carried)
    {
        model_.scene->MaterialLibrary.emplace_back();
        model_.scene->MaterialLibrary.back().SetName(name);
        model_.carried.materialOf.push_back(std::move(carried));
        Surface surface;
        surface.SetMaterialID(static_cast<int>(model_.scene->MaterialLibrary.size() - 1));
        return surface;
    }

    Surface AddCarried(const std::string& object, const std::string& name = "")
    {
        model_.carried.materials.push_back(Json::parse(object));
        CarriedMaterial carried;
        carried.material = static_cast<int>(model_.carried.materials.size() - 1);
        return AddMaterial(name, carried);
    }

    Model model_;
    WriteOptions options_;
    Document document_;
    Buffers buffers_{document_};
    ImageWriter images_{options_, buffers_, document_};
    TextureWriter textures_{model_, images_, document_};
    MaterialWriter writer_{model_, textures_, document_, {2}};
};

TEST_F(GltfMaterialWriter, AMaterialOfTheInputIsWrittenUnchanged)
{
    const std::string object = R"({"name": "Glass", "doubleSided": true, "alphaMode": "MASK", "extras": "text"})";
    Surface surface = AddCarried(object, "Glass");
    EXPECT_EQ(writer_.Find(surface, 0).material, 0);
    EXPECT_EQ(document_.materials.at(0), Json::parse(object));
}

TEST_F(GltfMaterialWriter, ARenamedMaterialHasItsNewName)
{
    Surface surface = AddCarried(R"({"name": "Glass"})", "Glass_2");
    writer_.Find(surface, 0);
    EXPECT_EQ(document_.materials.at(0)["name"], "Glass_2");
}

TEST_F(GltfMaterialWriter, EqualMaterialsAreWrittenOnceUnlessAnimationsReferToThem)
{
    for (int material = 0; material < 3; ++material)
    {
        Surface surface = AddCarried(R"({"doubleSided": true})");
        EXPECT_EQ(writer_.Find(surface, 0).material, material == 2 ? 1 : 0);
    }
    EXPECT_EQ(writer_.FindCarried(1), 0);
    EXPECT_EQ(writer_.FindCarried(2), 1);
    EXPECT_EQ(writer_.FindCarried(3), -1);
}

TEST_F(GltfMaterialWriter, TheDefaultMaterialOfTheFormatIsNotWritten)
{
    CarriedMaterial carried;
    carried.material = -1;
    Surface surface = AddMaterial("", carried);
    EXPECT_EQ(writer_.Find(surface, 0).material, -1);
    EXPECT_TRUE(document_.materials.empty());
}

TEST_F(GltfMaterialWriter, VariantsReferToTheWrittenMaterials)
{
    AddCarried(R"({"name": "unused"})");
    AddCarried(R"({"name": "other"})");
    Surface surface = AddCarried(R"({"name": "own"})");
    model_.carried.materialOf.back().primitive =
        Json::parse(R"({"extensions": {"KHR_materials_variants": {"mappings": [{"material": 1, "variants": [0]}]}}})");
    const PrimitiveLook& look = writer_.Find(surface, 0);
    const int variant = look.primitive["extensions"]["KHR_materials_variants"]["mappings"][0]["material"].get<int>();
    EXPECT_EQ(document_.materials.at(static_cast<std::size_t>(variant))["name"], "other");
    EXPECT_EQ(document_.materials.size(), 2U);
}

TEST_F(GltfMaterialWriter, OtherMaterialsAreConvertedAndPatched)
{
    CarriedMaterial carried;
    carried.patch = Json::parse(R"({"doubleSided": true, "pbrMetallicRoughness": {"metallicFactor": 0.5}})");
    Surface surface = AddMaterial("Tin", carried);
    EXPECT_EQ(writer_.Find(surface, 0).material, 0);
    EXPECT_EQ(document_.materials[0]["name"], "Tin");
    EXPECT_EQ(document_.materials[0]["doubleSided"], true);
    EXPECT_EQ(document_.materials[0]["pbrMetallicRoughness"]["metallicFactor"], 0.5);
}

TEST_F(GltfMaterialWriter, DroppedLayersAreReported)
{
    Surface surface;
    surface.MapList.resize(1);
    surface.MapList[0].SetTextureID(0);
    surface.MapList[0].SetType("sheen");
    writer_.Find(surface, 1);
    Notes notes;
    writer_.AddNotes(notes);
    ASSERT_EQ(notes.All().size(), 1U);
    EXPECT_EQ(notes.All()[0].loss, "texture-layers");
    EXPECT_EQ(notes.All()[0].text,
              "dropped texture layers that glTF has no place for, or that the mesh has no texture "
              "coordinates for: sheen");
}

}  // namespace
