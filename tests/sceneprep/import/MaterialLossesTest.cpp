#include <sceneprep/import/MaterialLosses.h>

#include <assimp/GltfMaterial.h>
#include <gtest/gtest.h>

namespace
{

using Sceneprep::MaterialLosses;
using Notes = std::vector<std::string>;

Notes NotesOn(const aiMaterial& material)
{
    MaterialLosses losses;
    losses.Count(material);
    return losses.Notes();
}

void SetAlphaMode(aiMaterial& material, const char* name)
{
    const aiString mode(name);
    material.AddProperty(&mode, AI_MATKEY_GLTF_ALPHAMODE);
}

void AddTexture(aiMaterial& material, aiTextureType type)
{
    const aiString file("a.png");
    material.AddProperty(&file, AI_MATKEY_TEXTURE(type, 0));
}

TEST(MaterialLosses, AnEmptyMaterialLosesNothing) { EXPECT_EQ(NotesOn(aiMaterial()), Notes{}); }

TEST(MaterialLosses, CountsAlphaCutOuts)
{
    aiMaterial material;
    SetAlphaMode(material, "MASK");
    EXPECT_EQ(NotesOn(material), (Notes{"alpha cut-outs are dropped (materials: 1)"}));
}

TEST(MaterialLosses, CountsDoubleSidedFlagsOfAnyType)
{
    const bool yes = true;
    const int one = 1;
    const int no = 0;
    aiMaterial truth;
    truth.AddProperty(&yes, 1, AI_MATKEY_TWOSIDED);
    aiMaterial number;
    number.AddProperty(&one, 1, AI_MATKEY_TWOSIDED);
    aiMaterial oneSided;
    oneSided.AddProperty(&no, 1, AI_MATKEY_TWOSIDED);
    MaterialLosses losses;
    for (const aiMaterial* material : {&truth, &number, &oneSided})
        losses.Count(*material);
    EXPECT_EQ(losses.Notes(), (Notes{"double-sided materials become single-sided (2)"}));
}

TEST(MaterialLosses, CountsTransparencyFromTextures)
{
    for (const aiTextureType type : {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR})
    {
        aiMaterial material;
        SetAlphaMode(material, "BLEND");
        EXPECT_EQ(NotesOn(material), Notes{}) << "no texture";
        AddTexture(material, type);
        EXPECT_EQ(NotesOn(material), (Notes{"transparency from textures is dropped (materials: 1)"}));
        const float half = 0.5F;
        material.AddProperty(&half, 1, AI_MATKEY_OPACITY);
        EXPECT_EQ(NotesOn(material), Notes{}) << "the opacity is kept";
    }
    aiMaterial opaque;
    SetAlphaMode(opaque, "OPAQUE");
    AddTexture(opaque, aiTextureType_DIFFUSE);
    EXPECT_EQ(NotesOn(opaque), Notes{});
}

TEST(MaterialLosses, CountsMetallicMaterials)
{
    const float none = 0;
    aiMaterial wood;
    wood.AddProperty(&none, 1, AI_MATKEY_METALLIC_FACTOR);
    EXPECT_EQ(NotesOn(wood), Notes{});
    const float some = 0.25F;
    aiMaterial tin;
    tin.AddProperty(&some, 1, AI_MATKEY_METALLIC_FACTOR);
    EXPECT_EQ(NotesOn(tin), (Notes{"metallic materials become non-metallic (1)"}));
}

TEST(MaterialLosses, CountsUnlitMaterials)
{
    const int phong = aiShadingMode_Phong;
    aiMaterial lit;
    lit.AddProperty(&phong, 1, AI_MATKEY_SHADING_MODEL);
    EXPECT_EQ(NotesOn(lit), Notes{});
    const int unlit = aiShadingMode_NoShading;
    aiMaterial flat;
    flat.AddProperty(&unlit, 1, AI_MATKEY_SHADING_MODEL);
    EXPECT_EQ(NotesOn(flat), (Notes{"unlit materials become lit (1)"}));
}

TEST(MaterialLosses, CountsFurtherLayersOncePerMaterial)
{
    const float half = 0.5F;
    const aiColor3D red(1, 0, 0);
    aiMaterial coated;
    coated.AddProperty(&half, 1, AI_MATKEY_CLEARCOAT_FACTOR);
    coated.AddProperty(&half, 1, AI_MATKEY_TRANSMISSION_FACTOR);
    aiMaterial clear;
    clear.AddProperty(&half, 1, AI_MATKEY_TRANSMISSION_FACTOR);
    aiMaterial velvet;
    velvet.AddProperty(&red, 1, AI_MATKEY_SHEEN_COLOR_FACTOR);
    MaterialLosses losses;
    for (const aiMaterial* material : {&coated, &clear, &velvet})
        losses.Count(*material);
    EXPECT_EQ(losses.Notes(), (Notes{"sheen, clear coat and transmission are dropped (materials: 3)"}));
}

TEST(MaterialLosses, IgnoresLayersWithAFactorOfZero)
{
    const float none = 0;
    const aiColor3D black(0, 0, 0);
    aiMaterial material;
    material.AddProperty(&none, 1, AI_MATKEY_CLEARCOAT_FACTOR);
    material.AddProperty(&none, 1, AI_MATKEY_TRANSMISSION_FACTOR);
    material.AddProperty(&black, 1, AI_MATKEY_SHEEN_COLOR_FACTOR);
    EXPECT_EQ(NotesOn(material), Notes{});
}

}  // namespace
