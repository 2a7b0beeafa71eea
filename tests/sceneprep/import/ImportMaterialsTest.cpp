#include <sceneprep/import/ImportMaterials.h>

#include <assimp/GltfMaterial.h>
#include <assimp/commonMetaData.h>
#include <gtest/gtest.h>
#include <sceneprep/model/ImageKind.h>

#include <cstring>
#include <memory>

namespace
{

using namespace Sceneprep;
using Importing::SceneContainer;
using Importing::Surface;

class ImportMaterialsTest : public testing::Test
{
protected:
    aiMaterial& AddMaterial()
    {
        materials_.push_back(new aiMaterial);
        return *materials_.back();
    }

    static void AddTexture(aiMaterial& material, aiTextureType type, const char* file, int uvSet = 0)
    {
        const aiString path(file);
        material.AddProperty(&path, AI_MATKEY_TEXTURE(type, 0));
        material.AddProperty(&uvSet, 1, AI_MATKEY_UVWSRC(type, 0));
    }

    Surface Import(unsigned material)
    {
        if (source_.mMaterials == nullptr)
        {
            source_.mMaterials = new aiMaterial*[materials_.size()];
            for (aiMaterial* entry : materials_)
                source_.mMaterials[source_.mNumMaterials++] = entry;
            importer_ = std::make_unique<MaterialImporter>(source_, model_);
        }
        Surface surface;
        importer_->Apply(material, surface);
        return surface;
    }

    aiScene source_;
    std::vector<aiMaterial*> materials_;
    Model model_{.scene = std::make_unique<SceneContainer>()};
    SceneContainer& scene_ = *model_.scene;
    Textures& textures_ = model_.textures;
    std::unique_ptr<MaterialImporter> importer_;
};

TEST_F(ImportMaterialsTest, ConvertsAllFields)
{
    aiMaterial& source = AddMaterial();
    const aiString name("Glass");
    const aiColor4D diffuse(0.1F, 0.2F, 0.3F, 0.4F);
    const aiColor3D specular(0.5F, 0.6F, 0.7F);
    const aiColor3D emissive(0.8F, 0.9F, 1.0F);
    const float power = 33;
    const float opacity = 0.25F;
    source.AddProperty(&name, AI_MATKEY_NAME);
    source.AddProperty(&diffuse, 1, AI_MATKEY_COLOR_DIFFUSE);
    source.AddProperty(&specular, 1, AI_MATKEY_COLOR_SPECULAR);
    source.AddProperty(&emissive, 1, AI_MATKEY_COLOR_EMISSIVE);
    source.AddProperty(&power, 1, AI_MATKEY_SHININESS);
    source.AddProperty(&opacity, 1, AI_MATKEY_OPACITY);
    EXPECT_EQ(Import(0).GetMaterialID(), 0);
    Importing::Material& material = scene_.MaterialLibrary.at(0);
    EXPECT_EQ(material.GetName(), "Glass");
    EXPECT_EQ(material.GetDiffuse(), D3DXCOLOR(0.1F, 0.2F, 0.3F, 1));
    EXPECT_EQ(material.GetSpecular(), D3DXCOLOR(0.5F, 0.6F, 0.7F, 1));
    EXPECT_EQ(material.GetEmissive(), D3DXCOLOR(0.8F, 0.9F, 1.0F, 1));
    EXPECT_EQ(material.GetSpecularPower(), 33);
    EXPECT_EQ(material.GetOpacity(), 0.25F);
}

TEST_F(ImportMaterialsTest, UsesTheDiffuseAlphaWithoutAnOpacity)
{
    const aiColor4D diffuse(1, 1, 1, 0.5F);
    AddMaterial().AddProperty(&diffuse, 1, AI_MATKEY_COLOR_DIFFUSE);
    Import(0);
    EXPECT_EQ(scene_.MaterialLibrary.at(0).GetOpacity(), 0.5F);
}

TEST_F(ImportMaterialsTest, MissingFieldsKeepTheirDefaults)
{
    AddMaterial();
    Import(0);
    Importing::Material standard;
    EXPECT_EQ(scene_.MaterialLibrary.at(0).GetDiffuse(), standard.GetDiffuse());
    EXPECT_EQ(scene_.MaterialLibrary.at(0).GetSpecularPower(), 16);
}

TEST_F(ImportMaterialsTest, MergesEqualMaterialsAndSkipsUnusedOnes)
{
    AddMaterial();
    AddMaterial();
    const aiColor3D red(1, 0, 0);
    AddMaterial().AddProperty(&red, 1, AI_MATKEY_COLOR_DIFFUSE);
    EXPECT_EQ(Import(1).GetMaterialID(), 0);
    EXPECT_EQ(Import(0).GetMaterialID(), 0);
    EXPECT_EQ(scene_.MaterialLibrary.size(), 1U);
}

TEST_F(ImportMaterialsTest, MapsHaveTextureTypeAndUVSet)
{
    aiMaterial& source = AddMaterial();
    AddTexture(source, aiTextureType_DIFFUSE, "Textures/Wood.PNG");
    AddTexture(source, aiTextureType_NORMALS, "bumps.png", 1);
    Surface surface = Import(0);
    ASSERT_EQ(surface.MapList.size(), 2U);
    EXPECT_EQ(surface.MapList[0].GetType(), "diffuse");
    EXPECT_EQ(surface.MapList[0].GetTextureID(), 0);
    EXPECT_EQ(surface.MapList[1].GetType(), "normal");
    EXPECT_EQ(surface.MapList[1].GetUVSetIndex(), 1U);
    EXPECT_EQ(scene_.TextureLibrary, (std::vector<std::string>{"textures/wood.png", "bumps.png"}));
    EXPECT_EQ(textures_.spelling.at("textures/wood.png"), "Textures/Wood.PNG");
}

TEST_F(ImportMaterialsTest, ABaseColourEqualToTheDiffuseTextureIsNotASecondLayer)
{
    aiMaterial& source = AddMaterial();
    AddTexture(source, aiTextureType_DIFFUSE, "a.png");
    AddTexture(source, aiTextureType_BASE_COLOR, "a.png");
    EXPECT_EQ(Import(0).MapList.size(), 1U);
    EXPECT_EQ(scene_.TextureLibrary.size(), 1U);
}

TEST_F(ImportMaterialsTest, ReportsDroppedContentOncePerMaterial)
{
    const aiString mask("MASK");
    const int clamped = aiTextureMapMode_Clamp;
    const int mirrored = aiTextureMapMode_Mirror;
    const int repeated = aiTextureMapMode_Wrap;
    aiUVTransform moved;
    moved.mTranslation = {0.5F, 0};
    aiMaterial& first = AddMaterial();
    first.AddProperty(&mask, AI_MATKEY_GLTF_ALPHAMODE);
    for (const aiTextureType type : {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR})
    {
        AddTexture(first, type, "a.png");  // one layer
        first.AddProperty(&clamped, 1, AI_MATKEY_MAPPINGMODE_U(type, 0));
        first.AddProperty(&clamped, 1, AI_MATKEY_MAPPINGMODE_V(type, 0));
    }
    first.AddProperty(&moved, 1, AI_MATKEY_UVTRANSFORM(aiTextureType_DIFFUSE, 0));
    AddTexture(first, aiTextureType_NORMALS, "b.png");
    first.AddProperty(&repeated, 1, AI_MATKEY_MAPPINGMODE_U(aiTextureType_NORMALS, 0));
    aiMaterial& second = AddMaterial();
    AddTexture(second, aiTextureType_EMISSIVE, "c.png");
    second.AddProperty(&mirrored, 1, AI_MATKEY_MAPPINGMODE_V(aiTextureType_EMISSIVE, 0));
    for (const unsigned material : {0U, 0U, 1U, 1U})
        Import(material);
    Notes notes;
    importer_->AddNotes(notes);
    EXPECT_EQ(notes.All(), (std::vector<Note>{{"texture transforms are dropped (layers: 1)", "texture-transforms"},
                                              {"wrap modes of textures become repeat (layers: 2)", "wrap-modes"}}));
}

TEST_F(ImportMaterialsTest, DoesNotReportMaterialsWithoutDroppedContent)
{
    AddMaterial();
    Import(0);
    Notes notes;
    importer_->AddNotes(notes);
    EXPECT_TRUE(notes.Empty());
}

TEST_F(ImportMaterialsTest, AnInvalidMaterialIndexGivesNoMaterial)
{
    AddMaterial();
    EXPECT_EQ(Import(7).GetMaterialID(), -1);
}

TEST_F(ImportMaterialsTest, KeepsEmbeddedImages)
{
    auto* compressed = new aiTexture;
    compressed->mWidth = 5;
    compressed->pcData = new aiTexel[2];
    std::memcpy(compressed->pcData, "12345", 5);
    std::strcpy(compressed->achFormatHint, "png");
    auto* pixels = new aiTexture;
    pixels->mWidth = 2;
    pixels->mHeight = 3;
    pixels->pcData = new aiTexel[6]();
    source_.mNumTextures = 2;
    source_.mTextures = new aiTexture* [2] { compressed, pixels };
    const std::vector<EmbeddedTexture> images = ImportEmbeddedTextures(source_);
    ASSERT_EQ(images.size(), 2U);
    EXPECT_EQ(images[0].content, (std::vector<unsigned char>{'1', '2', '3', '4', '5'}));
    EXPECT_EQ(images[0].formatHint, "png");
    EXPECT_EQ(images[1].formatHint, "png");
    ASSERT_NE(ImageKindOf(images[1].content), nullptr);  // raw pixels are encoded
    EXPECT_STREQ(ImageKindOf(images[1].content)->extension, "png");
}

}  // namespace
