#pragma once

#include <string>

namespace Sceneprep
{

/// @return the path as it may stand in a glTF file: forward slashes, and %20 and its like for what may not. A reference
///         into the net stays as it is.
std::string EncodeUri(const std::string& path);

/// @return the path that a reference of a glTF file means. A percent sign that two hexadecimal digits do not follow,
///         and a reference into the net, stay as they are.
std::string DecodeUri(const std::string& uri);

}  // namespace Sceneprep
