#pragma once

#include <cstdint>
#include <vector>

namespace Sceneprep
{

/// @param pixels  four bytes each: blue, green, red, alpha; row by row from the top
/// @return the file's bytes; empty when that is no picture.
std::vector<unsigned char> EncodePng(const unsigned char* pixels, std::uint32_t width, std::uint32_t height);

}  // namespace Sceneprep
