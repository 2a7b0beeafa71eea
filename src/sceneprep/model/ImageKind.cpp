#include <sceneprep/model/ImageKind.h>

#include <algorithm>
#include <iterator>

namespace Sceneprep
{

namespace
{

constexpr ImageKind kKinds[] = {
    {"image/png", "png", "\x89PNG", "", 0, nullptr},
    {"image/jpeg", "jpg", "\xFF\xD8\xFF", "", 0, nullptr},
    {"image/webp", "webp", "RIFF", "WEBP", 8, "EXT_texture_webp"},
    {"image/avif", "avif", "", "ftypavif", 4, "EXT_texture_avif"},
    {"image/ktx2", "ktx2", "\xABKTX 20\xBB", "", 0, "KHR_texture_basisu"},
    {"image/vnd-ms.dds", "dds", "DDS ", "", 0, "MSFT_texture_dds"},
};

bool HasBytes(const std::vector<unsigned char>& file, std::size_t place, std::string_view bytes)
{
    return file.size() > place + bytes.size() &&
           std::equal(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(place),
                      [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; });
}

}  // namespace

const ImageKind* ImageKindOf(const std::vector<unsigned char>& file)
{
    const auto* found = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const ImageKind& kind) {
        return HasBytes(file, 0, kind.start) && HasBytes(file, kind.markAt, kind.mark);
    });
    return found == std::end(kKinds) ? nullptr : found;
}

}  // namespace Sceneprep
