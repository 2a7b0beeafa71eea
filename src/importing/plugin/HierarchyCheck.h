#pragma once

#include <importing/base/CheckedAccess.h>
#include <importing/records/Node.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace Importing
{

/// Throws the exception for a node that is its own ancestor.
[[noreturn]] inline void ThrowCycle() { throw std::runtime_error("cycle in the node hierarchy"); }

/// Walks a hierarchy once, before an operation changes it. An explicit stack replaces recursion, so depth is limited
/// only by memory.
///
/// A node for which isWalked(node) returns false is skipped with all nodes below it. enter(index) is called once for
/// every walked node, parents before children, and throws when something that the node refers to does not exist.
/// leave(index) is called once for every walked node after all nodes below it have been left.
///
/// Cost: linear in the nodes and the entries of their child lists, plus the calls.
/// @return the number of levels, including that of the start node.
/// @throws std::out_of_range when start, or an entry of a walked child list, is not the index of a node.
/// @throws std::runtime_error "cycle in the node hierarchy" when a walked node is its own ancestor.
template <typename IsWalked, typename Enter, typename Leave>
std::size_t CheckHierarchy(const std::vector<Node>& nodes, std::int32_t start, IsWalked isWalked, Enter enter,
                           Leave leave)
{
    enum class State : std::uint8_t
    {
        New,
        OnPath,
        Done
    };
    struct Frame
    {
        std::int32_t node;
        std::uint32_t nextChild;
    };

    std::vector<State> states(nodes.size(), State::New);
    std::vector<Frame> path;
    std::size_t levels = 0;
    const auto visit = [&](std::int32_t index) {
        CheckIndex(index, nodes.size());
        State& state = states[static_cast<std::size_t>(index)];
        if (state == State::OnPath)
            ThrowCycle();
        if (state == State::Done || !isWalked(nodes[static_cast<std::size_t>(index)]))
            return;
        enter(index);
        state = State::OnPath;
        path.push_back({index, 0});
        levels = std::max(levels, path.size());
    };

    visit(start);
    while (!path.empty())
    {
        Frame& frame = path.back();
        const std::vector<std::int32_t>& children = nodes[static_cast<std::size_t>(frame.node)].ChildList;
        if (frame.nextChild < children.size())
        {
            visit(children[frame.nextChild++]);
        }
        else
        {
            states[static_cast<std::size_t>(frame.node)] = State::Done;
            leave(frame.node);
            path.pop_back();
        }
    }
    return levels;
}

/// Walks a hierarchy like the function above, without calls for nodes that are left.
template <typename IsWalked, typename Enter>
std::size_t CheckHierarchy(const std::vector<Node>& nodes, std::int32_t start, IsWalked isWalked, Enter enter)
{
    return CheckHierarchy(nodes, start, isWalked, enter, [](std::int32_t) {});
}

}  // namespace Importing
