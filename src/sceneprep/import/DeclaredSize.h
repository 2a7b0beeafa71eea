#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace Sceneprep
{

/// Returns how many bytes a file has according to its own header: for 3DS files, whose first chunk contains all others,
/// and for STL files in binary form, which count their triangles. None for other files, and for those without a header.
std::optional<std::uint64_t> DeclaredSize(const std::filesystem::path& file);

}  // namespace Sceneprep
