#pragma once

#include <string>

namespace Sceneprep
{

/// Returns the path as a URI of a glTF file: forward slashes, and other characters percent-encoded. A URL is returned
/// unchanged.
std::string EncodeUri(const std::string& path);

/// Returns the path that a URI of a glTF file refers to. A percent sign without two hexadecimal digits after it, and a
/// URL, stay unchanged.
std::string DecodeUri(const std::string& uri);

}  // namespace Sceneprep
