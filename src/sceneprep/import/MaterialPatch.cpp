#include <sceneprep/import/MaterialPatch.h>

#include <assimp/GltfMaterial.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace Sceneprep
{

namespace
{

/// Assimp's importers store the flag as a bool, an integer or a float.
bool IsDoubleSided(const aiMaterial& material)
{
    const aiMaterialProperty* mark = nullptr;
    if (aiGetMaterialProperty(&material, AI_MATKEY_TWOSIDED, &mark) != aiReturn_SUCCESS)
        return false;
    return std::any_of(mark->mData, mark->mData + mark->mDataLength, [](char byte) { return byte != 0; });
}

bool IsUnlit(const aiMaterial& material)
{
    int model = aiShadingMode_Gouraud;
    return material.Get(AI_MATKEY_SHADING_MODEL, model) == aiReturn_SUCCESS && model == aiShadingMode_NoShading;
}

/// Returns a factor within 0 and 1; nothing where the material has none or it is NaN.
std::optional<double> FactorOf(const aiMaterial& material, const char* key, unsigned type, unsigned index)
{
    ai_real factor = 0;
    if (material.Get(key, type, index, factor) != aiReturn_SUCCESS || std::isnan(factor))
        return std::nullopt;
    return std::clamp(static_cast<double>(factor), 0.0, 1.0);
}

void SetFactor(Json& target, const char* name, std::optional<double> factor)
{
    if (factor)
        target[name] = *factor;
}

/// Adds an extension that has an effect only when its main factor is above 0.
void AddLayer(Json& patch, const char* extension, const char* mainName, std::optional<double> mainFactor,
              const char* furtherName = nullptr, std::optional<double> furtherFactor = std::nullopt)
{
    if (mainFactor.value_or(0) <= 0)
        return;
    Json& layer = patch["extensions"][extension];
    layer[mainName] = *mainFactor;
    if (furtherName != nullptr)
        SetFactor(layer, furtherName, furtherFactor);
}

void AddSheen(const aiMaterial& material, Json& patch)
{
    aiColor3D color;
    if (material.Get(AI_MATKEY_SHEEN_COLOR_FACTOR, color) != aiReturn_SUCCESS || color.IsBlack())
        return;
    Json& sheen = patch["extensions"]["KHR_materials_sheen"];
    sheen["sheenColorFactor"] = {color.r, color.g, color.b};
    SetFactor(sheen, "sheenRoughnessFactor", FactorOf(material, AI_MATKEY_SHEEN_ROUGHNESS_FACTOR));
}

/// Assimp's importers store the alpha mode and the cutoff in properties named after glTF, regardless of the format.
void AddAlphaMode(const aiMaterial& material, Json& patch)
{
    aiString mode;
    if (material.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) != aiReturn_SUCCESS)
        return;
    const std::string_view name = mode.C_Str();
    if (name != "MASK" && name != "BLEND")
        return;
    patch["alphaMode"] = name;
    if (name == "MASK")
        SetFactor(patch, "alphaCutoff", FactorOf(material, AI_MATKEY_GLTF_ALPHACUTOFF));
}

}  // namespace

Json MaterialPatch(const aiMaterial& material)
{
    Json patch = Json::object();
    if (IsDoubleSided(material))
        patch["doubleSided"] = true;
    Json pbr = Json::object();
    SetFactor(pbr, "metallicFactor", FactorOf(material, AI_MATKEY_METALLIC_FACTOR));
    SetFactor(pbr, "roughnessFactor", FactorOf(material, AI_MATKEY_ROUGHNESS_FACTOR));
    if (!pbr.empty())
        patch["pbrMetallicRoughness"] = std::move(pbr);
    AddAlphaMode(material, patch);
    if (IsUnlit(material))
        patch["extensions"]["KHR_materials_unlit"] = Json::object();
    AddLayer(patch, "KHR_materials_clearcoat", "clearcoatFactor", FactorOf(material, AI_MATKEY_CLEARCOAT_FACTOR),
             "clearcoatRoughnessFactor", FactorOf(material, AI_MATKEY_CLEARCOAT_ROUGHNESS_FACTOR));
    AddLayer(patch, "KHR_materials_transmission", "transmissionFactor",
             FactorOf(material, AI_MATKEY_TRANSMISSION_FACTOR));
    AddSheen(material, patch);
    return patch;
}

}  // namespace Sceneprep
