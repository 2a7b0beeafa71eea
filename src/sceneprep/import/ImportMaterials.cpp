#include <sceneprep/import/ImportMaterials.h>

#include <assimp/material.h>
#include <fmt/format.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/assimp/MapTypes.h>
#include <sceneprep/assimp/Roughness.h>
#include <sceneprep/import/MaterialPatch.h>
#include <sceneprep/model/EncodePng.h>

#include <algorithm>
#include <optional>

namespace Sceneprep
{

namespace
{

using Importing::Map;
using Importing::Material;

D3DXCOLOR ColorOr(const aiMaterial& source, const char* key, unsigned type, unsigned index, const D3DXCOLOR& otherwise)
{
    aiColor4D color;
    if (source.Get(key, type, index, color) != aiReturn_SUCCESS)
        return otherwise;
    return {color.r, color.g, color.b, 1.0F};
}

float OpacityOf(const aiMaterial& source)
{
    float opacity = 1;
    if (source.Get(AI_MATKEY_OPACITY, opacity) == aiReturn_SUCCESS)
        return opacity;
    aiColor4D diffuse;
    return source.Get(AI_MATKEY_COLOR_DIFFUSE, diffuse) == aiReturn_SUCCESS ? diffuse.a : 1.0F;
}

Material ConvertMaterial(const aiMaterial& source)
{
    Material material;
    aiString name;
    if (source.Get(AI_MATKEY_NAME, name) == aiReturn_SUCCESS)
        material.SetName(name.C_Str());
    const D3DXCOLOR base = ColorOr(source, AI_MATKEY_BASE_COLOR, material.GetDiffuse());
    material.SetDiffuse(ColorOr(source, AI_MATKEY_COLOR_DIFFUSE, base));
    material.SetSpecular(ColorOr(source, AI_MATKEY_COLOR_SPECULAR, material.GetSpecular()));
    material.SetEmissive(ColorOr(source, AI_MATKEY_COLOR_EMISSIVE, material.GetEmissive()));
    float power = 0;
    float roughness = 0;
    if (source.Get(AI_MATKEY_ROUGHNESS_FACTOR, roughness) == aiReturn_SUCCESS)
        material.SetSpecularPower(PowerOf(roughness));
    else if (source.Get(AI_MATKEY_SHININESS, power) == aiReturn_SUCCESS)
        material.SetSpecularPower(power);
    material.SetOpacity(OpacityOf(source));
    return material;
}

/// Transforms have no form that all readers of Assimp agree on.
bool HasTransform(const aiMaterial& source, aiTextureType type, unsigned layer)
{
    aiUVTransform transform;
    return source.Get(AI_MATKEY_UVTRANSFORM(type, layer), transform) == aiReturn_SUCCESS &&
           !(transform.mTranslation == aiVector2D(0, 0) && transform.mScaling == aiVector2D(1, 1) &&
             transform.mRotation == 0);
}

bool IsRepeated(const aiMaterial& source, aiTextureType type, unsigned layer)
{
    int u = aiTextureMapMode_Wrap;
    int v = aiTextureMapMode_Wrap;
    source.Get(AI_MATKEY_MAPPINGMODE_U(type, layer), u);
    source.Get(AI_MATKEY_MAPPINGMODE_V(type, layer), v);
    return u == aiTextureMapMode_Wrap && v == aiTextureMapMode_Wrap;
}

/// Assimp lists the base colour texture of physically based materials twice: as base colour and as diffuse colour.
bool RepeatsDiffuse(std::vector<Map>& maps, Map& map)
{
    return map.GetType() == "base-color" && std::any_of(maps.begin(), maps.end(), [&map](Map& other) {
               return other.GetType() == "diffuse" && other.GetTextureID() == map.GetTextureID() &&
                      other.GetUVSetIndex() == map.GetUVSetIndex();
           });
}

}  // namespace

MaterialImporter::MaterialImporter(const aiScene& source, Model& model)
    : source_(source), scene_(*model.scene), textures_(model.textures), carried_(model.carried.materialOf)
{}

void MaterialImporter::Apply(unsigned sourceMaterial, Importing::Surface& surface)
{
    if (sourceMaterial >= source_.mNumMaterials)
        return;
    auto found = imported_.find(sourceMaterial);
    if (found == imported_.end())
        found = imported_.emplace(sourceMaterial, Import(*source_.mMaterials[sourceMaterial])).first;
    surface.SetMaterialID(found->second.material);
    surface.MapList = found->second.maps;
}

MaterialImporter::Imported MaterialImporter::Import(const aiMaterial& source)
{
    return {AddMaterial(source), ImportMaps(source)};
}

int MaterialImporter::AddMaterial(const aiMaterial& source)
{
    Material material = ConvertMaterial(source);
    Json patch = MaterialPatch(source);
    const int same = scene_.AddMaterialToLibrary(material, true);
    const auto [found, isNew] = indexByPatch_.emplace(std::pair(same, patch.dump()), same);
    if (!isNew)
        return found->second;
    // Materials that are equal in the container but differ in the file stay separate.
    if (static_cast<std::size_t>(same) < carried_.size())
        found->second = scene_.AddMaterialToLibrary(material, false);
    carried_.resize(scene_.MaterialLibrary.size());
    carried_.back().patch = std::move(patch);
    return found->second;
}

std::vector<Map> MaterialImporter::ImportMaps(const aiMaterial& source)
{
    std::vector<Map> maps;
    for (const MapType& type : kMapTypes)
    {
        for (unsigned i = 0; i < source.GetTextureCount(type.texture); ++i)
        {
            aiString file;
            unsigned uvSet = 0;
            ai_real amount = 1;
            if (source.GetTexture(type.texture, i, &file, nullptr, &uvSet, &amount) != aiReturn_SUCCESS)
                continue;
            const std::string path = file.C_Str();
            Map map;
            map.SetTextureID(scene_.AddTextureToLibrary(path, true));
            map.SetType(type.name);
            map.SetUVSetIndex(uvSet);
            map.SetAmount(amount);
            droppedTransforms_ += HasTransform(source, type.texture, i) ? 1 : 0;
            textures_.spelling.emplace(scene_.TextureLibrary[static_cast<std::size_t>(map.GetTextureID())], path);
            if (RepeatsDiffuse(maps, map))
                continue;
            maps.push_back(map);
            notRepeated_ += IsRepeated(source, type.texture, i) ? 0 : 1;
        }
    }
    return maps;
}

void MaterialImporter::AddNotes(Notes& notes) const
{
    if (droppedTransforms_ > 0)
        notes.AddLoss("texture-transforms",
                      fmt::format("texture transforms are dropped (layers: {})", droppedTransforms_));
    if (notRepeated_ > 0)
        notes.AddLoss("wrap-modes", fmt::format("wrap modes of textures become repeat (layers: {})", notRepeated_));
}

std::vector<EmbeddedTexture> ImportEmbeddedTextures(const aiScene& source)
{
    std::vector<EmbeddedTexture> textures;
    for (unsigned i = 0; i < source.mNumTextures; ++i)
    {
        const aiTexture& image = *source.mTextures[i];
        const auto* first = reinterpret_cast<const unsigned char*>(image.pcData);
        EmbeddedTexture texture{.fileName = image.mFilename.C_Str(), .formatHint = image.achFormatHint};
        if (image.mHeight == 0)
        {
            texture.content.assign(first, first + image.mWidth);
        }
        else
        {
            texture.formatHint = "png";
            texture.content = EncodePng(first, image.mWidth, image.mHeight);
        }
        textures.push_back(std::move(texture));
    }
    return textures;
}

}  // namespace Sceneprep
