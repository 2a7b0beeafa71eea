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

/// Says which of the records with these names get which new names, so that names become distinct; in index order.
///
/// Of n equal names NAME the first becomes NAME(n-1), the next NAME(n-2), and so on, the last one stays. Where a record
/// carries the new name already, [1], [2], ... is tried behind it; names given here are not avoided.
/// Cost: linear in the names; no name is tried twice.
std::vector<Renaming> FindRenamings(const std::vector<std::string>& names);

}  // namespace Importing
