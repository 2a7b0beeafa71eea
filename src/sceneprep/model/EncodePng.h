#pragma once

#include <cstdint>
#include <vector>

namespace Sceneprep
{

/// Returns the image as the bytes of a PNG file; empty if an extent is 0 or the image is too large.
/// @param pixels  four bytes each: blue, green, red, alpha; row by row from the top
std::vector<unsigned char> EncodePng(const unsigned char* pixels, std::uint32_t width, std::uint32_t height);

}  // namespace Sceneprep
