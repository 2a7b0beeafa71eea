#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace Sceneprep::GltfImport
{

/// Reads a whole regular file.
/// @throws FormatError with the reason if it cannot be read.
std::vector<std::uint8_t> ReadFile(const std::filesystem::path& file);

}  // namespace Sceneprep::GltfImport
