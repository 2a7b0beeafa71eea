#include <sceneprep/export/gltf/Materials.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/MaterialKey.h>
#include <sceneprep/assimp/Roughness.h>
#include <sceneprep/export/gltf/Extensions.h>
#include <sceneprep/export/gltf/Finite.h>
#include <sceneprep/export/gltf/TextureTransform.h>
#include <sceneprep/export/gltf/Utf8.h>

#include <algorithm>
#include <cmath>

namespace Sceneprep::Gltf
{

using Pipeline::MaterialKey;

namespace
{

using Importing::Map;
using Importing::Material;
using tinygltf::Value;

double Part(float value) { return std::isfinite(value) ? std::clamp(static_cast<double>(value), 0.0, 1.0) : 0.0; }

std::vector<double> Parts(const D3DXCOLOR& color) { return {Part(color.r), Part(color.g), Part(color.b)}; }

bool IsOneGrey(const D3DXCOLOR& color, float grey) { return color.r == grey && color.g == grey && color.b == grey; }

void SetEmission(const D3DXCOLOR& color, tinygltf::Model& model, tinygltf::Material& target)
{
    const float strength = std::max({color.r, color.g, color.b});
    if (!(strength > 1) || !std::isfinite(strength))
    {
        target.emissiveFactor = Parts(color);
        return;
    }
    target.emissiveFactor = Parts({color.r / strength, color.g / strength, color.b / strength, 1});
    Value::Object extension;
    extension["emissiveStrength"] = Value(static_cast<double>(strength));
    AddExtension("KHR_materials_emissive_strength", Value(std::move(extension)), model, target.extensions);
}

void SetSpecular(const D3DXCOLOR& color, tinygltf::Model& model, tinygltf::Material& target)
{
    if (IsOneGrey(color, 0) || IsOneGrey(color, 1))
        return;
    Value::Array factor;
    for (const double part : Parts(color))
        factor.emplace_back(part);
    Value::Object extension;
    extension["specularColorFactor"] = Value(std::move(factor));
    AddExtension("KHR_materials_specular", Value(std::move(extension)), model, target.extensions);
}

}  // namespace

MaterialWriter::MaterialWriter(Importing::SceneContainer& scene, ImageWriter& images, tinygltf::Model& model)
    : scene_(scene), images_(images), model_(model)
{}

int MaterialWriter::Find(Importing::Surface& surface, const MeshArrays& arrays)
{
    const std::string key = fmt::format("{}|{}", MaterialKey(surface), arrays.CountTexCoords());
    const auto [found, isNew] = indexByKey_.emplace(key, static_cast<int>(model_.materials.size()));
    if (isNew)
        model_.materials.push_back(Convert(surface, arrays));
    return found->second;
}

tinygltf::Material MaterialWriter::Convert(Importing::Surface& surface, const MeshArrays& arrays)
{
    Material standard;
    Material& material =
        surface.GetMaterialID() < 0 ? standard : Importing::At(scene_.MaterialLibrary, surface.GetMaterialID());
    const D3DXCOLOR diffuse = material.GetDiffuse();
    const double opacity = Part(material.GetOpacity());

    tinygltf::Material target;
    target.name = ToUtf8(material.GetName());
    target.pbrMetallicRoughness.baseColorFactor = {Part(diffuse.r), Part(diffuse.g), Part(diffuse.b), opacity};
    target.pbrMetallicRoughness.metallicFactor = 0;
    target.pbrMetallicRoughness.roughnessFactor = static_cast<double>(RoughnessOf(material.GetSpecularPower()));
    target.alphaMode = opacity < 1 ? "BLEND" : "OPAQUE";
    SetEmission(material.GetEmissive(), model_, target);
    SetSpecular(material.GetSpecular(), model_, target);
    for (Map& map : surface.MapList)
    {
        if (map.GetTextureID() >= 0)
            AddLayer(map, arrays, target);
    }
    return target;
}

void MaterialWriter::AddLayer(Map& map, const MeshArrays& arrays, tinygltf::Material& target)
{
    const std::string type = map.GetType();
    if (arrays.attributes.count(fmt::format("TEXCOORD_{}", map.GetUVSetIndex())) == 0 || !SetLayer(map, type, target))
        layersLeftOut_.insert(type);
}

bool MaterialWriter::SetLayer(Map& map, const std::string& type, tinygltf::Material& target)
{
    tinygltf::PbrMetallicRoughness& pbr = target.pbrMetallicRoughness;
    if (type == "diffuse" || type == "base-color")
        return SetTexture(map, pbr.baseColorTexture);
    if (type == "metallic-roughness" && SetTexture(map, pbr.metallicRoughnessTexture))
    {
        pbr.metallicFactor = 1;
        pbr.roughnessFactor = 1;
        return true;
    }
    if (type == "normal" && SetTexture(map, target.normalTexture))
    {
        target.normalTexture.scale = static_cast<double>(Finite(map.GetAmount(), 1));
        return true;
    }
    if ((type == "emissive" || type == "emission-color") && SetTexture(map, target.emissiveTexture))
    {
        // A black factor would hide the layer.
        if (target.emissiveFactor == std::vector<double>{0, 0, 0})
            target.emissiveFactor = {1, 1, 1};
        return true;
    }
    if ((type == "ambient-occlusion" || type == "lightmap") && SetTexture(map, target.occlusionTexture))
    {
        target.occlusionTexture.strength = Part(map.GetAmount());
        return true;
    }
    return false;
}

/// Fills any of the library's three kinds of texture references, unless it is taken.
template <typename TextureInfo>
bool MaterialWriter::SetTexture(Map& map, TextureInfo& target)
{
    if (target.index >= 0)
        return false;
    const int texture = images_.Find(map.GetTextureID());
    if (texture < 0)
        return true;  // the pictures that are left out are told on their own
    target.index = texture;
    target.texCoord = static_cast<int>(map.GetUVSetIndex());
    Value transform = TextureTransform(map.GetMatrix());
    if (transform.IsObject())
        AddExtension("KHR_texture_transform", std::move(transform), model_, target.extensions);
    return true;
}

}  // namespace Sceneprep::Gltf
