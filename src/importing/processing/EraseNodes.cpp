// Erasing one node moves the last node into its place and rewrites every child list, so erasing many nodes one by one
// is quadratic. Here the moves are made first, while a table records which original node is at each index. Inverted,
// the table gives the new index of every original node, and one pass rewrites all child lists.
// Cost: linear in nodes, child list entries and erasures.

#include <importing/processing/EraseNodes.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace Importing
{
namespace
{

constexpr std::int32_t kErased = -1;

/// Rewrites a child list to the new indices of the nodes and drops erased ones. Entries that were not indices of nodes
/// are kept.
void FollowMoves(std::vector<std::int32_t>& children, const std::vector<std::int32_t>& newIndex)
{
    auto kept = children.begin();
    for (const std::int32_t child : children)
    {
        const std::int32_t now =
            IsValidIndex(child, newIndex.size()) ? newIndex[static_cast<std::size_t>(child)] : child;
        if (now != kErased || child < 0)
            *kept++ = now;
    }
    children.erase(kept, children.end());
}

}  // namespace

void EraseNodes(std::vector<Node>& nodes, std::int32_t& root, const std::vector<std::uint32_t>& erased)
{
    // (1) Move the last node into the place of each erased one, and record the original node at each index.
    std::vector<std::int32_t> originalAt(nodes.size());
    std::iota(originalAt.begin(), originalAt.end(), 0);
    std::vector<std::int32_t> newIndex(nodes.size());
    std::size_t left = erased.size();
    for (; left > 0 && erased[left - 1] < nodes.size(); --left)
    {
        const std::size_t index = erased[left - 1];
        const std::size_t last = nodes.size() - 1;
        newIndex[static_cast<std::size_t>(originalAt[index])] = kErased;
        if (index != last)
        {
            nodes[index] = std::move(nodes[last]);
            originalAt[index] = originalAt[last];
        }
        nodes.pop_back();
        if (root == static_cast<std::int32_t>(last))
            root = static_cast<std::int32_t>(index);
    }

    // (2) Rewrite the references.
    for (std::size_t i = 0; i < nodes.size(); ++i)
        newIndex[static_cast<std::size_t>(originalAt[i])] = static_cast<std::int32_t>(i);
    for (Node& node : nodes)
        FollowMoves(node.ChildList, newIndex);

    if (left > 0)
        ThrowBadSubscript();
}

}  // namespace Importing
