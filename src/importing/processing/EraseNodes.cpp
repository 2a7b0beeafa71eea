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

/// Where a node went is where references to it must go. An entry that designated no node before designates none now.
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
    // (1) Let the last node take the place of each erased one, and follow who stands where.
    std::vector<std::int32_t> standing(nodes.size());
    std::iota(standing.begin(), standing.end(), 0);
    std::vector<std::int32_t> newIndex(nodes.size());
    std::size_t left = erased.size();
    for (; left > 0 && erased[left - 1] < nodes.size(); --left)
    {
        const std::size_t index = erased[left - 1];
        const std::size_t last = nodes.size() - 1;
        newIndex[static_cast<std::size_t>(standing[index])] = kErased;
        if (index != last)
        {
            nodes[index] = std::move(nodes[last]);
            standing[index] = standing[last];
        }
        nodes.pop_back();
        if (root == static_cast<std::int32_t>(last))
            root = static_cast<std::int32_t>(index);
    }

    // (2) Send the references after the nodes.
    for (std::size_t i = 0; i < nodes.size(); ++i)
        newIndex[static_cast<std::size_t>(standing[i])] = static_cast<std::int32_t>(i);
    for (Node& node : nodes)
        FollowMoves(node.ChildList, newIndex);

    if (left > 0)
        ThrowBadSubscript();
}

}  // namespace Importing
