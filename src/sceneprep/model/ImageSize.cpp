#include <sceneprep/model/ImageSize.h>

#include <sceneprep/model/ImageKind.h>

#include <cstddef>
#include <string_view>

namespace Sceneprep
{

namespace
{

using ImageBytes = std::vector<unsigned char>;

/// Returns the unsigned number of `count` bytes at a position; 0 if the file ends before.
/// @{
std::uint32_t BigEndian(const ImageBytes& file, std::size_t position, std::size_t count)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < count; ++i)
        number = number << 8U | (position + count <= file.size() ? file[position + i] : 0U);
    return number;
}

std::uint32_t LittleEndian(const ImageBytes& file, std::size_t position, std::size_t count)
{
    std::uint32_t number = 0;
    for (std::size_t i = count; i > 0; --i)
        number = number << 8U | (position + count <= file.size() ? file[position + i - 1] : 0U);
    return number;
}
/// @}

/// The extent is in the frame header, which follows segments of any number and length.
ImageSize SizeOfJpeg(const ImageBytes& file)
{
    std::size_t position = 2;
    while (position + 4 <= file.size() && file[position] == 0xFF)
    {
        const unsigned marker = file[position + 1];
        if (marker == 0xFF)  // a fill byte
        {
            ++position;
            continue;
        }
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame)
            return {BigEndian(file, position + 7, 2), BigEndian(file, position + 5, 2)};
        const bool hasNoLength = marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
        position += 2 + (hasNoLength ? 0 : BigEndian(file, position + 2, 2));
    }
    return {};
}

ImageSize SizeOfWebp(const ImageBytes& file)
{
    constexpr std::size_t kChunk = 12;
    const std::uint32_t kind = BigEndian(file, kChunk, 4);
    constexpr std::uint32_t kLossy = 0x56503820;     // "VP8 "
    constexpr std::uint32_t kLossless = 0x5650384C;  // "VP8L"
    constexpr std::uint32_t kExtended = 0x56503858;  // "VP8X"
    if (kind == kExtended && file.size() >= 30)
        return {LittleEndian(file, 24, 3) + 1, LittleEndian(file, 27, 3) + 1};
    if (kind == kLossless && file.size() >= 25)
    {
        const std::uint32_t bits = LittleEndian(file, 21, 4);
        return {(bits & 0x3FFFU) + 1, (bits >> 14U & 0x3FFFU) + 1};
    }
    if (kind == kLossy)  // the upper two bits are a scale for display
        return {LittleEndian(file, 26, 2) & 0x3FFFU, LittleEndian(file, 28, 2) & 0x3FFFU};
    return {};
}

ImageSize SizeInHeader(const ImageBytes& file, std::string_view kind)
{
    if (kind == "png")
        return {BigEndian(file, 16, 4), BigEndian(file, 20, 4)};
    if (kind == "jpg")
        return SizeOfJpeg(file);
    if (kind == "webp")
        return SizeOfWebp(file);
    if (kind == "ktx2")
        return {LittleEndian(file, 20, 4), LittleEndian(file, 24, 4)};
    if (kind == "dds")
        return {LittleEndian(file, 16, 4), LittleEndian(file, 12, 4)};
    return {};
}

}  // namespace

std::optional<ImageSize> SizeOfImage(const ImageBytes& file)
{
    const ImageKind* kind = ImageKindOf(file);
    if (kind == nullptr)
        return std::nullopt;
    const ImageSize size = SizeInHeader(file, kind->extension);
    return size.width > 0 && size.height > 0 ? std::optional(size) : std::nullopt;
}

}  // namespace Sceneprep
