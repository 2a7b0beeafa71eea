#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

namespace Sceneprep
{

/// Counts the names that a file uses and makes further ones that are unique in it. Constant time for each name.
class UniqueNames
{
public:
    /// Counts one more use of a name.
    void Count(const std::string& name) { ++uses_[name]; }

    /// Returns how often a name was counted or made.
    std::size_t Uses(const std::string& name) const;

    /// Makes a name that has no use yet: the wanted name, or the name with _2, _3, ... appended. Counts it.
    /// @param otherwise  replaces an empty name
    std::string Make(const std::string& wanted, const std::string& otherwise);

private:
    std::unordered_map<std::string, std::size_t> uses_;
    std::unordered_map<std::string, std::size_t> lastNumber_;
};

}  // namespace Sceneprep
