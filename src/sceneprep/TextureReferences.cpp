#include <sceneprep/TextureReferences.h>

#include <algorithm>
#include <charconv>

namespace Sceneprep
{

std::string FileNameOf(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

std::string SpellingOf(const Textures& textures, const std::string& entry)
{
    const auto found = textures.spelling.find(entry);
    return found == textures.spelling.end() ? entry : found->second;
}

const EmbeddedTexture* FindEmbedded(const Textures& textures, const std::string& reference)
{
    if (reference.starts_with('*'))
    {
        std::size_t number = 0;
        const char* end = reference.data() + reference.size();
        const auto [read, error] = std::from_chars(reference.data() + 1, end, number);
        if (error == std::errc() && read == end && number < textures.embedded.size())
            return &textures.embedded[number];
    }
    const auto named =
        std::find_if(textures.embedded.begin(), textures.embedded.end(), [&](const EmbeddedTexture& picture) {
            return !picture.fileName.empty() && FileNameOf(picture.fileName) == FileNameOf(reference);
        });
    return named == textures.embedded.end() ? nullptr : &*named;
}

}  // namespace Sceneprep
