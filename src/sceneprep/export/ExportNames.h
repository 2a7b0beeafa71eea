#pragma once

#include <sceneprep/assimp/Formats.h>

#include <string>

namespace Sceneprep
{

/// The longest name, in bytes, that the model library's texts hold together with a number behind it.
inline constexpr std::size_t kLongestName = 1000;

/// @return a name as the model library's exporters can write it: on one line, not too long, and without characters that
///         break files of the format. Different names may become one. A name that was returned stays as it is.
std::string ExportName(const std::string& name, const WriteFormat& format);

}  // namespace Sceneprep
