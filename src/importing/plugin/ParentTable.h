#pragma once

#include <importing/records/Node.h>

#include <cstdint>
#include <vector>

namespace Importing
{

/// Returns for every node what FindParentNode returns: [N] the lowest index of a node whose child list contains it, or
/// -1. Entries of child lists that are not indices of nodes are skipped. Cost: linear in nodes and child list entries.
std::vector<std::int32_t> ParentTable(const std::vector<Node>& nodes);

/// Returns the indices of a node and of its ancestors, from the node upwards. Cost: linear in the path.
/// @throws std::runtime_error "cycle in the node hierarchy" when the node or one of its ancestors is its own ancestor.
/// @throws std::out_of_range when index is not the index of a node.
std::vector<std::int32_t> PathToRoot(const std::vector<std::int32_t>& parents, std::int32_t index);

}  // namespace Importing
