#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace Sceneprep
{

/// The extent of an image in pixels.
struct ImageSize
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    friend bool operator==(const ImageSize&, const ImageSize&) = default;
};

/// Reads the extent of a PNG, JPEG, WebP, KTX2 or DDS image from its header, without decoding it.
/// @param file  the image file, or a beginning that contains the header
/// @return none for other kinds, and for files that are damaged or end before the extent.
std::optional<ImageSize> SizeOfImage(const std::vector<unsigned char>& file);

}  // namespace Sceneprep
