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

/// What the file is says more than what it was called.
std::string EndingOf(const EmbeddedTexture& picture)
{
    if (const ImageKind* kind = ImageKindOf(picture.content))
        return kind->extension;
    std::string ending = picture.formatHint;
    if (ending.empty())
        ending = std::filesystem::path(FileNameOf(picture.fileName)).extension().string();
    std::erase_if(ending, [](unsigned char letter) { return std::isalnum(letter) == 0; });
    return ending.empty() ? "picture" : ending;
}

}  // namespace

std::string CompanionName(const std::string& stem, std::size_t number, const EmbeddedTexture& picture)
{
    return fmt::format("{}-picture{}.{}", stem, number, EndingOf(picture));
}

PlacedTextures PlaceBeside(const Importing::SceneContainer& scene, const Textures& textures, const std::string& stem)
{
    PlacedTextures placed;
    placed.textures.spelling = textures.spelling;
    std::map<const EmbeddedTexture*, std::string> nameOf;
    for (const std::string& entry : scene.TextureLibrary)
    {
        const EmbeddedTexture* picture = FindEmbedded(textures, SpellingOf(textures, entry));
        if (picture == nullptr)
            continue;
        const auto [name, isNew] = nameOf.emplace(picture, CompanionName(stem, nameOf.size(), *picture));
        if (isNew)
            placed.companions.push_back({name->second, &picture->content});
        placed.textures.spelling[entry] = name->second;
    }
    return placed;
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
