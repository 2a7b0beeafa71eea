#pragma once

#include <pictures/Image.h>

#include <filesystem>

namespace Pictures
{

/// Writes a PNG file of 8 bits a channel.
/// @throws std::runtime_error when the file cannot be written.
void WritePng(const Image& image, const std::filesystem::path& file);

}  // namespace Pictures
