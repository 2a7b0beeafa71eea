#pragma once

#include <string>
#include <string_view>

namespace Sceneprep
{

/// Returns a name so that it takes one line of a text and cannot control a terminal: line breaks, tabs and backslashes
/// become \n, \r, \t and \\, other control characters \x and two hexadecimal digits. Other bytes are unchanged.
std::string PrintableName(std::string_view name);

}  // namespace Sceneprep
