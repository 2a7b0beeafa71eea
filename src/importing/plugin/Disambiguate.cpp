#include <importing/plugin/Disambiguate.h>

#include <cstdint>
#include <unordered_map>

namespace Importing
{
namespace
{

using Occurrences = std::unordered_map<std::string, std::uint32_t>;

bool IsTaken(const Occurrences& left, const std::string& name)
{
    const auto entry = left.find(name);
    return entry != left.end() && entry->second != 0;
}

/// The candidate itself, or the first of candidate[1], candidate[2], ... that no record carried.
std::string FirstFree(const Occurrences& left, const std::string& candidate)
{
    std::string name = candidate;
    for (std::uint32_t retry = 1; IsTaken(left, name); ++retry)
        name = candidate + "[" + std::to_string(retry) + "]";
    return name;
}

}  // namespace

std::vector<Renaming> FindRenamings(const std::vector<std::string>& names)
{
    Occurrences left;
    for (const std::string& name : names)
        ++left[name];

    std::vector<Renaming> renamings;
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        std::uint32_t& count = left[names[i]];
        if (count <= 1)
            continue;
        --count;
        renamings.push_back({i, FirstFree(left, names[i] + "(" + std::to_string(count) + ")")});
    }
    return renamings;
}

}  // namespace Importing
