#include <sceneprep/export/gltf/Materials.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/assimp/Roughness.h>
#include <sceneprep/export/gltf/Finite.h>
#include <sceneprep/export/gltf/TextureTransform.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::Map;
using Importing::Material;

constexpr const char* kPbr = "pbrMetallicRoughness";

double Clamped(float value) { return std::isfinite(value) ? std::clamp(static_cast<double>(value), 0.0, 1.0) : 0.0; }

Json Clamped(const D3DXCOLOR& color) { return Json::array({Clamped(color.r), Clamped(color.g), Clamped(color.b)}); }

bool IsGrey(const D3DXCOLOR& color, float grey) { return color.r == grey && color.g == grey && color.b == grey; }

void SetEmission(const D3DXCOLOR& color, Json& target)
{
    if (IsGrey(color, 0))
        return;
    const float strength = std::max({color.r, color.g, color.b});
    if (!(strength > 1) || !std::isfinite(strength))
    {
        target["emissiveFactor"] = Clamped(color);
        return;
    }
    target["emissiveFactor"] = Clamped({color.r / strength, color.g / strength, color.b / strength, 1});
    target["extensions"]["KHR_materials_emissive_strength"] = {{"emissiveStrength", strength}};
}

void SetSpecular(const D3DXCOLOR& color, Json& target)
{
    if (!IsGrey(color, 0) && !IsGrey(color, 1))
        target["extensions"]["KHR_materials_specular"] = {{"specularColorFactor", Clamped(color)}};
}

/// Returns the object for the factors of a material.
Json ConvertFactors(Material& material)
{
    const D3DXCOLOR diffuse = material.GetDiffuse();
    const double opacity = Clamped(material.GetOpacity());
    Json target = Json::object();
    if (!material.GetName().empty())
        target["name"] = material.GetName();
    target[kPbr] = {
        {"baseColorFactor", Json::array({Clamped(diffuse.r), Clamped(diffuse.g), Clamped(diffuse.b), opacity})},
        {"metallicFactor", 0},
        {"roughnessFactor", RoughnessOf(material.GetSpecularPower())}};
    if (opacity < 1)
        target["alphaMode"] = "BLEND";
    SetEmission(material.GetEmissive(), target);
    SetSpecular(material.GetSpecular(), target);
    return target;
}

}  // namespace

Json MaterialConverter::Convert(Importing::Surface& surface, std::size_t texCoordSets)
{
    Material standard;
    Material& material =
        surface.GetMaterialID() < 0 ? standard : Importing::At(model_.scene->MaterialLibrary, surface.GetMaterialID());
    Json target = ConvertFactors(material);
    for (Map& map : surface.MapList)
    {
        if (map.GetTextureID() >= 0)
            AddLayer(map, texCoordSets, target);
    }
    return target;
}

void MaterialConverter::AddLayer(Map& map, std::size_t texCoordSets, Json& target)
{
    const std::string type = map.GetType();
    if (map.GetUVSetIndex() >= texCoordSets || !SetLayer(map, type, target))
        droppedLayers_.insert(type);
}

bool MaterialConverter::SetLayer(Map& map, const std::string& type, Json& target)
{
    if (type == "diffuse" || type == "base-color")
        return SetTexture(map, "baseColorTexture", target[kPbr]);
    if (type == "metallic-roughness" && SetTexture(map, "metallicRoughnessTexture", target[kPbr]))
    {
        target[kPbr]["metallicFactor"] = 1;
        target[kPbr]["roughnessFactor"] = 1;
        return true;
    }
    if (type == "normal" && SetTexture(map, "normalTexture", target))
    {
        if (target.contains("normalTexture"))
            target["normalTexture"]["scale"] = Finite(map.GetAmount(), 1);
        return true;
    }
    if ((type == "emissive" || type == "emission-color") && SetTexture(map, "emissiveTexture", target))
    {
        // A black factor would hide the layer.
        if (!target.contains("emissiveFactor"))
            target["emissiveFactor"] = Json::array({1, 1, 1});
        return true;
    }
    if ((type == "ambient-occlusion" || type == "lightmap") && SetTexture(map, "occlusionTexture", target))
    {
        if (target.contains("occlusionTexture"))
            target["occlusionTexture"]["strength"] = Clamped(map.GetAmount());
        return true;
    }
    return false;
}

/// Sets a texture reference. Sets nothing if the image cannot be written, for which there is another note.
/// @return false if there is one already
bool MaterialConverter::SetTexture(Map& map, const char* key, Json& target)
{
    if (target.contains(key))
        return false;
    const int texture = textures_.FindOfLibrary(map.GetTextureID());
    if (texture < 0)
        return true;
    Json reference = {{"index", texture}};
    if (map.GetUVSetIndex() > 0)
        reference["texCoord"] = map.GetUVSetIndex();
    if (Json transform = TextureTransform(map.GetMatrix()); !transform.is_null())
        reference["extensions"]["KHR_texture_transform"] = std::move(transform);
    target[key] = std::move(reference);
    return true;
}

}  // namespace Sceneprep::Gltf
