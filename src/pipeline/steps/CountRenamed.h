#pragma once

#include <pipeline/scene/SceneStats.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Pipeline
{

template <typename Record>
std::vector<std::string> NamesOf(std::vector<Record>& library)
{
    std::vector<std::string> names;
    names.reserve(library.size());
    for (Record& record : library)
        names.push_back(record.GetName());
    return names;
}

/// Returns whether the record is used. Records that merging emptied are not, although they are renamed as well.
template <typename Record>
bool IsUsed(const Record& record)
{
    if constexpr (requires { IsEmptied(record); })
        return !IsEmptied(record);
    else
        return true;
}

/// Returns how many used records of the library have another name after the call of `rename`.
template <typename Record, typename Rename>
std::size_t CountRenamed(std::vector<Record>& library, Rename rename)
{
    const std::vector<std::string> before = NamesOf(library);
    rename();
    std::size_t renamed = 0;
    for (std::size_t i = 0; i < library.size(); ++i)
        renamed += IsUsed(library[i]) && library[i].GetName() != before[i] ? 1 : 0;
    return renamed;
}

}  // namespace Pipeline
