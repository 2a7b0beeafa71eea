#pragma once

#include <importing/records/Node.h>

#include <cstdint>
#include <vector>

namespace Importing
{

/// Erases several nodes with the same result as calls of EraseNodeFromLibrary from the largest index down, but updates
/// the child lists only once.
///
/// `erased` is sorted ascending. An index that it contains twice also erases the node that moved into the place of the
/// first one.
///
/// Cost: linear in nodes, child list entries and erasures.
/// @param root the root node index, which is updated when the root moves.
/// @throws std::out_of_range when an index is not that of a node at its turn. The larger indices have then been erased.
void EraseNodes(std::vector<Node>& nodes, std::int32_t& root, const std::vector<std::uint32_t>& erased);

}  // namespace Importing
