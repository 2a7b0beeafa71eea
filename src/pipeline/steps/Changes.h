#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Pipeline
{

/// The number of things of one kind that a step changed.
struct Change
{
    std::string what;  ///< plural, as "nodes renamed"
    std::size_t count = 0;
    /// The name of what was lost, as "tangents"; empty when nothing was.
    std::string loss = {};

    friend bool operator==(const Change&, const Change&) = default;
};
using Changes = std::vector<Change>;

}  // namespace Pipeline
