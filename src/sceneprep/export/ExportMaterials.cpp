#include <sceneprep/export/ExportMaterials.h>

#include <assimp/material.h>
#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/MaterialKey.h>
#include <sceneprep/assimp/Conversions.h>
#include <sceneprep/assimp/MapTypes.h>
#include <sceneprep/export/ExportNames.h>
#include <sceneprep/model/TextureReferences.h>

#include <cstring>

namespace Sceneprep
{

using Pipeline::MaterialKey;

namespace
{

using Importing::Map;
using Importing::Material;
using Importing::Surface;

void AddColors(Material& material, aiMaterial& target)
{
    // Only the opacity holds the transparency: with an alpha in the colour, readers would apply it twice.
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
    const auto [found, isNew] = indexByContent_.emplace(MaterialKey(surface), static_cast<unsigned>(materials_.size()));
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
    AddColors(material, *target);
    AddMaps(surface, *target);
    return target;
}

std::string MaterialExporter::NameFor(const std::string& wanted)
{
    const std::string name = ExportName(wanted, format_);
    // In OBJ, materials of one name would become one material.
    return format_.IsObj() ? names_.Make(name, "material") : name;
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
        const aiString file(SpellingOf(textures_, Importing::At(scene_.TextureLibrary, map.GetTextureID())));
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
    for (const EmbeddedTexture& image : textures.embedded)
    {
        auto texture = std::make_unique<aiTexture>();
        texture->mFilename = image.fileName;
        texture->mWidth = static_cast<unsigned>(image.content.size());
        texture->mHeight = 0;  // a file, not bare pixels
        std::strncpy(texture->achFormatHint, image.formatHint.c_str(), HINTMAXTEXTURELEN - 1);
        texture->pcData = new aiTexel[(image.content.size() + sizeof(aiTexel) - 1) / sizeof(aiTexel)];
        std::memcpy(texture->pcData, image.content.data(), image.content.size());
        target.mTextures[target.mNumTextures++] = texture.release();
    }
}

}  // namespace Sceneprep
