#include <sceneprep/NearestName.h>

#include <algorithm>
#include <utility>

namespace Sceneprep
{

namespace
{

using Row = std::vector<std::size_t>;

/// Returns the number of insertions, deletions, replacements and swaps of neighbours that make one text the other.
std::size_t EditDistance(std::string_view from, std::string_view to)
{
    // A row has the distances of a prefix of `from` to each prefix of `to`.
    Row beforeLast;
    Row last;
    Row row;
    for (std::size_t column = 0; column <= to.size(); ++column)
        row.push_back(column);
    for (std::size_t i = 1; i <= from.size(); ++i)
    {
        beforeLast = std::exchange(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j)
        {
            const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return row.back();
}

}  // namespace

std::string NearestName(std::string_view given, const std::vector<std::string>& names)
{
    std::string nearest;
    std::size_t least = given.size() / 3 + 1;
    for (const std::string& name : names)
    {
        const std::size_t distance = EditDistance(given, name);
        if (distance < least)
        {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

}  // namespace Sceneprep
