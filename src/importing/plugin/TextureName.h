#pragma once

#include <string>

namespace Importing
{

/// A texture reference in the form in which the texture library keeps it: every byte in lower case by the runtime's
/// tolower, without space, tab, vertical tab, carriage return and line feed at both ends.
std::string NormalizeTextureName(const std::string& text);

}  // namespace Importing
