#include <sceneprep/export/gltf/Textures.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/model/JsonReferences.h>
#include <sceneprep/model/TextureReferences.h>

#include <filesystem>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::At;

/// Returns whether a relative path leads to a file in or below the folder that it is relative to.
bool StaysInFolder(const std::filesystem::path& file)
{
    const std::filesystem::path normal = file.lexically_normal();
    return !normal.empty() && !normal.is_absolute() && *normal.begin() != "..";
}

bool HasSource(const Json& object)
{
    return object.is_object() && object.contains("source") && object["source"].is_number_integer();
}

}  // namespace

int TextureWriter::FindOfLibrary(int texture)
{
    const auto [found, isNew] = ofLibrary_.emplace(texture, -1);
    if (!isNew)
        return found->second;
    const std::string reference = SpellingOf(model_.textures, At(model_.scene->TextureLibrary, texture));
    const EmbeddedTexture* embedded = FindEmbedded(model_.textures, reference);
    Json object = Json::object();
    if (embedded != nullptr && !embedded->fileName.empty())
        object["name"] = embedded->fileName;
    const WrittenImage image =
        embedded == nullptr ? images_.AddFile(reference, object) : images_.AddEmbedded(*embedded, object);
    if (image.index < 0)
        return -1;
    Json source = {{"source", image.index}};
    if (image.kind != nullptr && image.kind->textureExtension != nullptr)
    {
        document_.requiredExtensions.insert(image.kind->textureExtension);
        source = {{"extensions", {{image.kind->textureExtension, std::move(source)}}}};
    }
    return found->second = AppendOnce(document_.textures, std::move(source), knownTextures_);
}

void TextureWriter::Reindex(Json& object)
{
    RenumberTextures(object, [this](int texture) { return FindCarried(texture); });
}

int TextureWriter::FindCarried(int texture)
{
    const auto [found, isNew] = carried_.emplace(texture, -1);
    if (isNew)
        found->second = Write(At(model_.carried.textures, texture));
    return found->second;
}

int TextureWriter::Write(Json texture)
{
    if (!ReindexSources(texture))
        return -1;
    if (texture.contains("sampler"))
        texture["sampler"] = WriteSampler(texture["sampler"].get<int>());
    return AppendOnce(document_.textures, std::move(texture), knownTextures_);
}

/// Makes the source, and those of extensions for other kinds of images, refer to images of the document.
/// @return false when there were sources and none of them can be written.
bool TextureWriter::ReindexSources(Json& texture)
{
    int written = 0;
    int sources = 0;
    const auto reindex = [&](Json& object) {
        ++sources;
        const int image = WriteImage(object["source"].get<int>()).index;
        if (image < 0)
            object.erase("source");
        else
            object["source"] = image;
        written += image < 0 ? 0 : 1;
        return image >= 0;
    };
    if (HasSource(texture))
        reindex(texture);
    if (texture.contains("extensions"))
    {
        Json& extensions = texture["extensions"];
        for (auto extension = extensions.begin(); extension != extensions.end();)
        {
            if (!HasSource(extension.value()) || reindex(extension.value()))
                ++extension;
            else
                extension = extensions.erase(extension);
        }
        if (extensions.empty())
            texture.erase("extensions");
    }
    return sources == 0 || written > 0;
}

WrittenImage TextureWriter::WriteImage(int image)
{
    const CarriedImage& source = At(model_.carried.images, image);
    Json object = source.object;
    if (source.embedded >= 0)
        return images_.AddEmbedded(At(model_.textures.embedded, source.embedded), std::move(object));
    const std::string original = source.file.generic_string();
    const std::string reference = RebasedReference(original, model_.file, images_.Options().folder / "model");
    return images_.AddFile(reference, std::move(object), StaysInFolder(source.file) ? original : std::string());
}

int TextureWriter::WriteSampler(int sampler)
{
    return AppendOnce(document_.samplers, At(model_.carried.samplers, sampler), knownSamplers_);
}

int TextureWriter::AppendOnce(std::vector<Json>& list, Json object, std::unordered_map<std::string, int>& known)
{
    const auto [found, isNew] = known.emplace(TextOf(object), static_cast<int>(list.size()));
    if (isNew)
        list.push_back(std::move(object));
    return found->second;
}

}  // namespace Sceneprep::Gltf
