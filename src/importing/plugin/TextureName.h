#pragma once

#include <string>

namespace Importing
{

/// Returns a texture reference in the form in which the texture library stores it: in lower case, with spaces, tabs,
/// vertical tabs, carriage returns and line feeds removed from both ends.
///
/// Each byte is lowered by the runtime's tolower in the current locale, after widening as a signed char; byte 0xFF,
/// which widens to EOF, stays. In the "C" locale, which is current unless the program sets another, bytes above 127
/// stay too. Deliberate: text is lowered byte by byte, so characters of several bytes keep their case.
///
/// Cost: linear in the length.
std::string NormalizeTextureName(const std::string& text);

}  // namespace Importing
