#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Returns a rule for Make and Ninja that says from which files an output was made.
std::string DepfileText(const std::filesystem::path& output, const std::vector<std::filesystem::path>& files);

}  // namespace Sceneprep
