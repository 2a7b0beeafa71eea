#include <sceneprep/import/gltf/Pointers.h>

#include <charconv>

namespace Sceneprep::GltfImport
{

const std::string* PointerOf(const Field& channelTarget)
{
    const std::optional<Field> extension = channelTarget.Extension("KHR_animation_pointer");
    return extension ? &extension->Member("pointer").Text() : nullptr;
}

std::vector<std::string> AnimationPointers(const Field& document)
{
    std::vector<std::string> pointers;
    for (std::size_t a = 0; a < document.SizeOf("animations"); ++a)
    {
        const Field channels = document.Member("animations").Element(a).Member("channels");
        for (std::size_t c = 0; c < channels.Size(); ++c)
        {
            if (const std::string* pointer = PointerOf(channels.Element(c).Member("target")))
                pointers.push_back(*pointer);
        }
    }
    return pointers;
}

std::optional<std::size_t> IndexInPointer(std::string_view pointer, std::string_view list)
{
    if (!pointer.starts_with(list))
        return std::nullopt;
    std::size_t index = 0;
    const char* end = pointer.data() + pointer.size();
    const auto [read, error] = std::from_chars(pointer.data() + list.size(), end, index);
    return error == std::errc() && (read == end || *read == '/') ? std::optional(index) : std::nullopt;
}

}  // namespace Sceneprep::GltfImport
