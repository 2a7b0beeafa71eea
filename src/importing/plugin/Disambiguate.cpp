// One pass counts each name in a hash table, a second one counts down. The table holds how many records with a name are
// left to be processed, so a lookup also answers whether a candidate is taken. Names are not sorted: the result depends
// on the order of the records.

#include <importing/plugin/Disambiguate.h>

#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace Importing
{
namespace
{

using Occurrences = std::unordered_map<std::string_view, std::uint32_t>;

bool IsTaken(const Occurrences& left, std::string_view name)
{
    const auto entry = left.find(name);
    return entry != left.end() && entry->second != 0;
}

/// Returns the candidate, or the first of candidate[1], candidate[2], ... that is not taken.
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
    left.reserve(names.size());
    std::vector<std::uint32_t*> countOf;
    countOf.reserve(names.size());
    for (const std::string& name : names)
    {
        countOf.push_back(&left[name]);
        ++*countOf.back();
    }

    std::vector<Renaming> renamings;
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        std::uint32_t& count = *countOf[i];
        if (count <= 1)
            continue;
        --count;
        renamings.push_back({i, FirstFree(left, names[i] + "(" + std::to_string(count) + ")")});
    }
    return renamings;
}

}  // namespace Importing
