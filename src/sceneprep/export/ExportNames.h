#pragma once

#include <sceneprep/assimp/Formats.h>

#include <string>

namespace Sceneprep
{

/// The longest name in bytes. Assimp's strings have 1,023 bytes, which leaves room for a number after the name.
inline constexpr std::size_t kLongestName = 1000;

/// Returns the name as Assimp's exporters can write it: on one line, not too long, and without characters that break
/// files of the format. Different names may become equal. A returned name does not change if it is passed again.
std::string ExportName(const std::string& name, const WriteFormat& format);

}  // namespace Sceneprep
