#include <sceneprep/model/CompanionFiles.h>

#include <fmt/format.h>
#include <sceneprep/model/ImageKind.h>
#include <sceneprep/model/TextureReferences.h>
#include <sceneprep/run/Error.h>

#include <cctype>
#include <fstream>
#include <map>

namespace Sceneprep
{

namespace
{

/// Returns the extension by the content of the file, which is more reliable than its name.
std::string ExtensionOf(const EmbeddedTexture& image)
{
    if (const ImageKind* kind = ImageKindOf(image.content))
        return kind->extension;
    std::string extension = image.formatHint;
    if (extension.empty())
        extension = std::filesystem::path(FileNameOf(image.fileName)).extension().string();
    std::erase_if(extension, [](unsigned char character) { return std::isalnum(character) == 0; });
    return extension.empty() ? "bin" : extension;
}

}  // namespace

std::string CompanionName(const std::string& stem, std::size_t number, const EmbeddedTexture& image)
{
    return fmt::format("{}-image{}.{}", stem, number, ExtensionOf(image));
}

CompanionTextures MakeCompanions(const Importing::SceneContainer& scene, const Textures& textures,
                                 const std::string& stem)
{
    CompanionTextures separated;
    separated.textures.spelling = textures.spelling;
    std::map<const EmbeddedTexture*, std::string> nameOf;
    for (const std::string& entry : scene.TextureLibrary)
    {
        const EmbeddedTexture* image = FindEmbedded(textures, SpellingOf(textures, entry));
        if (image == nullptr)
            continue;
        const auto [name, isNew] = nameOf.emplace(image, CompanionName(stem, nameOf.size(), *image));
        if (isNew)
            separated.companions.push_back({name->second, &image->content});
        separated.textures.spelling[entry] = name->second;
    }
    return separated;
}

void WriteCompanions(const std::vector<CompanionFile>& companions, const std::filesystem::path& folder)
{
    for (const CompanionFile& companion : companions)
    {
        const std::vector<unsigned char>& bytes = *companion.content;
        std::ofstream out(folder / companion.name, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out)
            throw ToolError(
                fmt::format("cannot write {}: is the disk full? Make room or choose another folder", companion.name));
    }
}

}  // namespace Sceneprep
