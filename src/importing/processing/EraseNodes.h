#pragma once

#include <importing/records/Node.h>

#include <cstdint>
#include <vector>

namespace Importing
{

/// Erases several nodes as one EraseNodeFromLibrary after another would, from the largest index down, but puts child
/// lists right only once.
///
/// erased is sorted ascending; an index that stands in it twice also erases the node that took its place.
///
/// @param root the root node index, which follows a moved root.
/// @throws std::out_of_range when an index designates no node at its turn; what came before it has been erased then.
/// Cost: linear in nodes, child list entries and erasures.
void EraseNodes(std::vector<Node>& nodes, std::int32_t& root, const std::vector<std::uint32_t>& erased);

}  // namespace Importing
