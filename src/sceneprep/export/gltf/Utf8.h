#pragma once

#include <string>

namespace Sceneprep::Gltf
{

/// @return the text with U+FFFD for every byte that is no part of a character in UTF-8. Names come from files of many
///         origins, and the format's text has to be UTF-8.
std::string ToUtf8(const std::string& text);

}  // namespace Sceneprep::Gltf
