#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Pipeline
{

/// The number of things of one kind that a step changed.
struct Change
{
    std::string what;  ///< plural, such as "nodes renamed"
    std::size_t count = 0;
    /// The name of the loss, such as "tangents"; empty if nothing was lost.
    std::string loss = {};

    friend bool operator==(const Change&, const Change&) = default;
};
using Changes = std::vector<Change>;

}  // namespace Pipeline
