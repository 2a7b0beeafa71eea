#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Sceneprep
{

/// Returns the name that was probably meant by `given`: the one with the smallest number of inserted, dropped, replaced
/// and swapped characters, the first of equally near ones. Empty if more than a third of the characters differ.
std::string NearestName(std::string_view given, const std::vector<std::string>& names);

}  // namespace Sceneprep
