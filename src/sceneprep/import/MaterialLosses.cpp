#include <sceneprep/import/MaterialLosses.h>

#include <assimp/GltfMaterial.h>
#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace Sceneprep
{

namespace
{

/// A material feature that the scene container cannot hold.
struct Loss
{
    bool (*isIn)(const aiMaterial&);
    const char* note;
};

bool HasAlphaMode(const aiMaterial& material, std::string_view expected)
{
    aiString mode;
    return material.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == aiReturn_SUCCESS && mode.C_Str() == expected;
}

bool IsCutOut(const aiMaterial& material) { return HasAlphaMode(material, "MASK"); }

/// Assimp's importers store the flag as a bool, an integer or a float.
bool IsDoubleSided(const aiMaterial& material)
{
    const aiMaterialProperty* mark = nullptr;
    if (aiGetMaterialProperty(&material, AI_MATKEY_TWOSIDED, &mark) != aiReturn_SUCCESS)
        return false;
    return std::any_of(mark->mData, mark->mData + mark->mDataLength, [](char byte) { return byte != 0; });
}

float FactorOr(const aiMaterial& material, const char* key, unsigned type, unsigned index, float otherwise)
{
    float factor = otherwise;
    return material.Get(key, type, index, factor) == aiReturn_SUCCESS ? factor : otherwise;
}

/// True if only the alpha of the colour texture makes the material transparent.
bool IsTransparentByTexture(const aiMaterial& material)
{
    const bool hasTexture =
        material.GetTextureCount(aiTextureType_DIFFUSE) + material.GetTextureCount(aiTextureType_BASE_COLOR) > 0;
    return hasTexture && HasAlphaMode(material, "BLEND") && FactorOr(material, AI_MATKEY_OPACITY, 1) >= 1;
}

bool IsMetallic(const aiMaterial& material) { return FactorOr(material, AI_MATKEY_METALLIC_FACTOR, 0) > 0; }

bool IsUnlit(const aiMaterial& material)
{
    int model = aiShadingMode_Gouraud;
    return material.Get(AI_MATKEY_SHADING_MODEL, model) == aiReturn_SUCCESS && model == aiShadingMode_NoShading;
}

bool HasFurtherLayers(const aiMaterial& material)
{
    aiColor3D sheen;
    const bool hasSheen = material.Get(AI_MATKEY_SHEEN_COLOR_FACTOR, sheen) == aiReturn_SUCCESS && !sheen.IsBlack();
    return hasSheen || FactorOr(material, AI_MATKEY_CLEARCOAT_FACTOR, 0) > 0 ||
           FactorOr(material, AI_MATKEY_TRANSMISSION_FACTOR, 0) > 0;
}

constexpr std::array<Loss, MaterialLosses::kKinds> kLosses = {
    {{IsCutOut, "alpha cut-outs are dropped (materials: {})"},
     {IsDoubleSided, "double-sided materials become single-sided ({})"},
     {IsTransparentByTexture, "transparency from textures is dropped (materials: {})"},
     {IsMetallic, "metallic materials become non-metallic ({})"},
     {IsUnlit, "unlit materials become lit ({})"},
     {HasFurtherLayers, "sheen, clear coat and transmission are dropped (materials: {})"}}};

}  // namespace

void MaterialLosses::Count(const aiMaterial& material)
{
    for (std::size_t kind = 0; kind < kKinds; ++kind)
        counts_[kind] += kLosses[kind].isIn(material) ? 1 : 0;
}

std::vector<std::string> MaterialLosses::Notes() const
{
    std::vector<std::string> notes;
    for (std::size_t kind = 0; kind < kKinds; ++kind)
    {
        if (counts_[kind] > 0)
            notes.push_back(fmt::format(fmt::runtime(kLosses[kind].note), counts_[kind]));
    }
    return notes;
}

}  // namespace Sceneprep
