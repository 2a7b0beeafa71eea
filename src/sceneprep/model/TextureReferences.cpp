#include <sceneprep/model/TextureReferences.h>

#include <algorithm>
#include <charconv>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

bool IsRelativeFile(const std::string& reference)
{
    return !reference.empty() && !fs::path(reference).is_absolute() && reference.find(':') == std::string::npos;
}

}  // namespace

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
        std::find_if(textures.embedded.begin(), textures.embedded.end(), [&](const EmbeddedTexture& image) {
            return !image.fileName.empty() && FileNameOf(image.fileName) == FileNameOf(reference);
        });
    return named == textures.embedded.end() ? nullptr : &*named;
}

std::string RebasedReference(const std::string& reference, const fs::path& from, const fs::path& to)
{
    const fs::path fromFolder = fs::absolute(from).lexically_normal().parent_path();
    const fs::path toFolder = fs::absolute(to).lexically_normal().parent_path();
    if (fromFolder == toFolder || !IsRelativeFile(reference))
        return reference;
    return (fromFolder / reference).lexically_normal().lexically_relative(toFolder).generic_string();
}

void RebaseReferences(const Importing::SceneContainer& scene, const fs::path& from, const fs::path& to,
                      Textures& textures)
{
    for (const std::string& entry : scene.TextureLibrary)
    {
        const std::string reference = SpellingOf(textures, entry);
        if (FindEmbedded(textures, reference) == nullptr)
            textures.spelling[entry] = RebasedReference(reference, from, to);
    }
}

}  // namespace Sceneprep
