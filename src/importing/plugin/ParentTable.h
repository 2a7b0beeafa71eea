#pragma once

#include <importing/records/Node.h>

#include <cstdint>
#include <vector>

namespace Importing
{

/// What FindParentNode finds for every node, in one walk: [N] lowest indices of a node that lists it, -1 for none.
/// Entries of child lists that designate no node are passed over.
std::vector<std::int32_t> ParentTable(const std::vector<Node>& nodes);

/// A node and its ancestors, upwards.
/// @throws std::runtime_error "cycle in the node hierarchy" when the node is among its own ancestors, or one of them is
///         among its own.
/// @throws std::out_of_range when index designates no node.
std::vector<std::int32_t> PathToRoot(const std::vector<std::int32_t>& parents, std::int32_t index);

}  // namespace Importing
