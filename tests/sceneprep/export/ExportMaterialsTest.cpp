#include <sceneprep/export/ExportMaterials.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using Importing::Map;
using Importing::Material;
using Importing::SceneContainer;
using Importing::Surface;

class ExportMaterialsTest : public testing::Test
{
protected:
    ExportMaterialsTest()
    {
        Material glass;
        glass.SetName("Glass");
        glass.SetDiffuse({0.1F, 0.2F, 0.3F, 0.4F});
        glass.SetSpecularPower(250);
        glass.SetOpacity(0.5F);
        scene_.MaterialLibrary.push_back(glass);
        scene_.MaterialLibrary.push_back(glass);
        scene_.TextureLibrary.emplace_back("wood.png");
        textures_.spelling["wood.png"] = "Wood.PNG";
    }

    static Surface SurfaceOf(int material)
    {
        Surface surface;
        surface.SetMaterialID(material);
        return surface;
    }

    static Surface Mapped(int texture, const std::string& type, std::uint32_t uvSet = 0)
    {
        Surface surface = SurfaceOf(0);
        Map map;
        map.SetTextureID(texture);
        map.SetType(type);
        map.SetUVSetIndex(uvSet);
        surface.MapList.push_back(map);
        return surface;
    }

    SceneContainer scene_;
    Textures textures_;
    aiScene target_;
};

std::string NameOf(const aiMaterial& material) { return const_cast<aiMaterial&>(material).GetName().C_Str(); }

TEST_F(ExportMaterialsTest, OnlyTheOpacityHoldsTheTransparency)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    MaterialExporter exporter(scene_, textures_, format);
    Surface surface = SurfaceOf(0);
    EXPECT_EQ(exporter.Find(surface), 0U);
    exporter.MoveTo(target_);
    ASSERT_EQ(target_.mNumMaterials, 1U);
    aiColor4D diffuse;
    float opacity = 0;
    EXPECT_EQ(NameOf(*target_.mMaterials[0]), "Glass");
    EXPECT_EQ(target_.mMaterials[0]->Get(AI_MATKEY_COLOR_DIFFUSE, diffuse), aiReturn_SUCCESS);
    EXPECT_EQ(target_.mMaterials[0]->Get(AI_MATKEY_OPACITY, opacity), aiReturn_SUCCESS);
    EXPECT_EQ(diffuse, aiColor4D(0.1F, 0.2F, 0.3F, 1));
    EXPECT_EQ(opacity, 0.5F);
}

TEST_F(ExportMaterialsTest, SurfacesOfOneMaterialAndEqualMapsShareOne)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    MaterialExporter exporter(scene_, textures_, format);
    Surface plain = SurfaceOf(0);
    Surface mapped = Mapped(0, "diffuse");
    Surface same = Mapped(0, "diffuse");
    Surface otherSet = Mapped(0, "diffuse", 1);
    EXPECT_EQ(exporter.Find(plain), 0U);
    EXPECT_EQ(exporter.Find(mapped), 1U);
    EXPECT_EQ(exporter.Find(same), 1U);
    EXPECT_EQ(exporter.Find(otherSet), 2U);
}

TEST_F(ExportMaterialsTest, TexturesAreSpelledAsInTheFile)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    MaterialExporter exporter(scene_, textures_, format);
    Surface surface = Mapped(0, "normal", 1);
    exporter.Find(surface);
    exporter.MoveTo(target_);
    aiString file;
    unsigned uvSet = 0;
    EXPECT_EQ(target_.mMaterials[0]->GetTexture(aiTextureType_NORMALS, 0, &file, nullptr, &uvSet), aiReturn_SUCCESS);
    EXPECT_STREQ(file.C_Str(), "Wood.PNG");
    EXPECT_EQ(uvSet, 1U);
}

TEST_F(ExportMaterialsTest, MapsWithoutATextureOrOfAnUnknownTypeAreSkipped)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    MaterialExporter exporter(scene_, textures_, format);
    Surface none = Mapped(-1, "diffuse");
    Surface unknown = Mapped(0, "fur");
    exporter.Find(none);
    exporter.Find(unknown);
    exporter.MoveTo(target_);
    EXPECT_EQ(target_.mMaterials[0]->GetTextureCount(aiTextureType_DIFFUSE), 0U);
    EXPECT_EQ(target_.mMaterials[1]->GetTextureCount(aiTextureType_DIFFUSE), 0U);
}

TEST_F(ExportMaterialsTest, NamesAreUniqueOnlyInObj)
{
    Surface first = SurfaceOf(0);
    Surface second = SurfaceOf(1);
    for (const char* file : {"a.obj", "a.dae"})
    {
        const WriteFormat format = *FindWriteFormat(file);
        MaterialExporter exporter(scene_, textures_, format);
        exporter.Find(first);
        exporter.Find(second);
        aiScene target;
        exporter.MoveTo(target);
        EXPECT_EQ(NameOf(*target.mMaterials[0]), "Glass");
        EXPECT_EQ(NameOf(*target.mMaterials[1]), format.IsObj() ? "Glass_2" : "Glass");
    }
}

TEST_F(ExportMaterialsTest, NamesThatBecomeEqualInObjAreNumbered)
{
    const WriteFormat format = *FindWriteFormat("a.obj");
    MaterialExporter exporter(scene_, textures_, format);
    scene_.MaterialLibrary[0].SetName("red\r\npaint");
    scene_.MaterialLibrary[1].SetName(" red paint");
    Surface first = SurfaceOf(0);
    Surface second = SurfaceOf(1);
    exporter.Find(first);
    exporter.Find(second);
    exporter.MoveTo(target_);
    EXPECT_EQ(NameOf(*target_.mMaterials[0]), "red paint");
    EXPECT_EQ(NameOf(*target_.mMaterials[1]), "red paint_2");
}

TEST_F(ExportMaterialsTest, SurfacesWithoutAMaterialUseTheDefaultOne)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    MaterialExporter exporter(scene_, textures_, format);
    Surface surface = SurfaceOf(-1);
    exporter.Find(surface);
    exporter.MoveTo(target_);
    EXPECT_EQ(NameOf(*target_.mMaterials[0]), "Default material");
}

TEST_F(ExportMaterialsTest, ASceneWithoutSurfacesGetsADefaultMaterial)
{
    const WriteFormat format = *FindWriteFormat("a.dae");
    MaterialExporter(scene_, textures_, format).MoveTo(target_);
    EXPECT_EQ(target_.mNumMaterials, 1U);
}

TEST_F(ExportMaterialsTest, EmbeddedImagesAreCopied)
{
    textures_.embedded.push_back({.fileName = "w.png", .formatHint = "png", .content = {1, 2, 3}});
    ExportEmbeddedTextures(textures_, target_);
    ASSERT_EQ(target_.mNumTextures, 1U);
    EXPECT_STREQ(target_.mTextures[0]->achFormatHint, "png");
    EXPECT_EQ(target_.mTextures[0]->mWidth, 3U);
    EXPECT_EQ(reinterpret_cast<const unsigned char*>(target_.mTextures[0]->pcData)[2], 3);
}

}  // namespace
