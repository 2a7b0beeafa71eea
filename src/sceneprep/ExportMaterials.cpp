#include <sceneprep/ExportMaterials.h>

#include <assimp/material.h>
#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/Conversions.h>
#include <sceneprep/MapTypes.h>

#include <algorithm>
#include <cstring>

namespace Sceneprep
{

namespace
{

using Importing::Map;
using Importing::Material;
using Importing::Surface;

/// What makes two surfaces' materials the same in the file. Bit by bit where numbers are concerned.
std::string ContentKey(Surface& surface)
{
    std::string key = std::to_string(surface.GetMaterialID());
    for (Map& map : surface.MapList)
    {
        std::uint32_t amount = 0;
        const float value = map.GetAmount();
        std::memcpy(&amount, &value, sizeof(amount));
        key += fmt::format("|{},{},{},{}", map.GetTextureID(), map.GetType(), map.GetUVSetIndex(), amount);
    }
    return key;
}

/// The opposite of how glTF's roughness turns into a power on import.
float RoughnessOf(float power) { return 1 - std::clamp(power / 1000, 0.0F, 1.0F); }

void AddColors(Material& material, const WriteFormat& format, aiMaterial& target)
{
    // Opacity carries the transparency alone: an alpha beside it would count twice.
    const D3DXCOLOR diffuse = material.GetDiffuse();
    const aiColor4D opaqueDiffuse(diffuse.r, diffuse.g, diffuse.b, 1);
    const aiColor3D specular = FromColor(material.GetSpecular());
    const aiColor3D emissive = FromColor(material.GetEmissive());
    const float power = material.GetSpecularPower();
    const float opacity = material.GetOpacity();
    target.AddProperty(&opaqueDiffuse, 1, AI_MATKEY_COLOR_DIFFUSE);
    target.AddProperty(&specular, 1, AI_MATKEY_COLOR_SPECULAR);
    target.AddProperty(&emissive, 1, AI_MATKEY_COLOR_EMISSIVE);
    target.AddProperty(&power, 1, AI_MATKEY_SHININESS);
    target.AddProperty(&opacity, 1, AI_MATKEY_OPACITY);
    if (format.IsGltf())
    {
        const float roughness = RoughnessOf(power);
        target.AddProperty(&roughness, 1, AI_MATKEY_ROUGHNESS_FACTOR);
    }
    const int shading = aiShadingMode_Phong;
    target.AddProperty(&shading, 1, AI_MATKEY_SHADING_MODEL);
}

}  // namespace

MaterialExporter::MaterialExporter(Importing::SceneContainer& scene, const Textures& textures,
                                   const WriteFormat& format)
    : scene_(scene), textures_(textures), format_(format)
{}

unsigned MaterialExporter::Find(Surface& surface)
{
    const auto [found, isNew] = indexByContent_.emplace(ContentKey(surface), static_cast<unsigned>(materials_.size()));
    if (isNew)
        materials_.push_back(Convert(surface));
    return found->second;
}

void MaterialExporter::MoveTo(aiScene& target)
{
    if (materials_.empty())
        materials_.push_back(std::make_unique<aiMaterial>());
    target.mMaterials = new aiMaterial*[materials_.size()];
    for (std::unique_ptr<aiMaterial>& material : materials_)
        target.mMaterials[target.mNumMaterials++] = material.release();
    materials_.clear();
}

std::unique_ptr<aiMaterial> MaterialExporter::Convert(Surface& surface)
{
    Material standard;
    Material& material =
        surface.GetMaterialID() < 0 ? standard : Importing::At(scene_.MaterialLibrary, surface.GetMaterialID());
    auto target = std::make_unique<aiMaterial>();
    const aiString name(NameFor(material.GetName()));
    target->AddProperty(&name, AI_MATKEY_NAME);
    AddColors(material, format_, *target);
    AddMaps(surface, *target);
    return target;
}

std::string MaterialExporter::NameFor(const std::string& name)
{
    if (!format_.IsObj())
        return name;
    // Materials of one name would become one material.
    const std::string plain = name.empty() ? "material" : name;
    std::string unique = plain;
    for (int number = 2; !names_.insert(unique).second; ++number)
        unique = fmt::format("{}_{}", plain, number);
    return unique;
}

std::string MaterialExporter::SpellingOf(int texture) const
{
    const std::string& reference = Importing::At(scene_.TextureLibrary, texture);
    const auto found = textures_.spelling.find(reference);
    return found == textures_.spelling.end() ? reference : found->second;
}

void MaterialExporter::AddMaps(Surface& surface, aiMaterial& target) const
{
    std::map<aiTextureType, unsigned> layers;
    for (Map& map : surface.MapList)
    {
        const std::optional<aiTextureType> type = FindTextureType(map.GetType());
        if (!type || map.GetTextureID() < 0)
            continue;
        const unsigned layer = layers[*type]++;
        const aiString file(SpellingOf(map.GetTextureID()));
        const int uvSet = static_cast<int>(map.GetUVSetIndex());
        const float amount = map.GetAmount();
        target.AddProperty(&file, AI_MATKEY_TEXTURE(*type, layer));
        target.AddProperty(&uvSet, 1, AI_MATKEY_UVWSRC(*type, layer));
        target.AddProperty(&amount, 1, AI_MATKEY_TEXBLEND(*type, layer));
    }
}

void ExportEmbeddedTextures(const Textures& textures, aiScene& target)
{
    if (textures.embedded.empty())
        return;
    target.mTextures = new aiTexture*[textures.embedded.size()];
    for (const EmbeddedTexture& picture : textures.embedded)
    {
        auto texture = std::make_unique<aiTexture>();
        texture->mFilename = picture.fileName;
        texture->mWidth = picture.width;
        texture->mHeight = picture.height;
        std::strncpy(texture->achFormatHint, picture.formatHint.c_str(), HINTMAXTEXTURELEN - 1);
        texture->pcData = new aiTexel[(picture.content.size() + sizeof(aiTexel) - 1) / sizeof(aiTexel)];
        std::memcpy(texture->pcData, picture.content.data(), picture.content.size());
        target.mTextures[target.mNumTextures++] = texture.release();
    }
}

}  // namespace Sceneprep
