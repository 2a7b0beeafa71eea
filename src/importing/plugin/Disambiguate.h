#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Importing
{

/// A record that gets a new name.
struct Renaming
{
    std::size_t index;
    std::string name;
};

/// Returns the renamings that make names distinct, in index order.
///
/// Of n equal names NAME the first becomes NAME(n-1), the next NAME(n-2), and so on; the last one is kept. If another
/// record still has the new name, [1], [2], ... is appended until no record has it. Names that earlier renamings of the
/// same call assigned are not avoided.
/// Cost: linear in the names on average, plus one lookup for each suffix that is tried.
std::vector<Renaming> FindRenamings(const std::vector<std::string>& names);

}  // namespace Importing
