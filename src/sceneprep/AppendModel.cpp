#include <sceneprep/AppendModel.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>

#include <charconv>
#include <optional>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

/// Understands "*3", the reference to a picture in the file itself.
std::optional<std::size_t> EmbeddedIndex(const std::string& reference)
{
    if (reference.size() < 2 || reference.front() != '*')
        return std::nullopt;
    std::size_t index = 0;
    const char* end = reference.data() + reference.size();
    const auto [stop, error] = std::from_chars(reference.data() + 1, end, index);
    return error == std::errc() && stop == end ? std::optional(index) : std::nullopt;
}

bool IsRelativeFile(const std::string& reference)
{
    return !reference.empty() && !fs::path(reference).is_absolute() && reference.find(':') == std::string::npos;
}

std::string Rebase(const std::string& reference, const fs::path& from, const fs::path& to)
{
    const fs::path fromFolder = fs::absolute(from).lexically_normal().parent_path();
    const fs::path toFolder = fs::absolute(to).lexically_normal().parent_path();
    if (fromFolder == toFolder || !IsRelativeFile(reference))
        return reference;
    return (fromFolder / reference).lexically_normal().lexically_relative(toFolder).generic_string();
}

std::string SpellingOf(const Textures& textures, const std::string& reference)
{
    const auto found = textures.spelling.find(reference);
    return found == textures.spelling.end() ? reference : found->second;
}

}  // namespace

void AppendModel(const LoadedModel& first, const LoadedModel& other)
{
    const std::size_t pictures = first.textures.embedded.size();
    for (std::string& reference : other.scene.TextureLibrary)
    {
        const std::optional<std::size_t> embedded = EmbeddedIndex(reference);
        const std::string spelling = embedded ? fmt::format("*{}", *embedded + pictures)
                                              : Rebase(SpellingOf(other.textures, reference), other.file, first.file);
        const int index = first.scene.AddTextureToLibrary(spelling, true);
        reference = Importing::At(first.scene.TextureLibrary, index);
        first.textures.spelling.emplace(reference, spelling);
    }
    for (EmbeddedTexture& picture : other.textures.embedded)
        first.textures.embedded.push_back(std::move(picture));
    first.scene.AppendSC(&other.scene);
}

}  // namespace Sceneprep
