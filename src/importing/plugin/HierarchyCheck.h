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

[[noreturn]] inline void ThrowCycle() { throw std::runtime_error("cycle in the node hierarchy"); }

/// Walks a hierarchy once before it is changed, without recursion.
///
/// isWalked(node) says whether a node is walked at all, below it and itself. enter(index) is called for every walked
/// node once, parents before children, and throws when something that the node refers to is missing. leave(index) is
/// called for each of them when all nodes below it have been left.
///
/// @return the number of levels, the start node's own included.
/// @throws std::out_of_range when start or an entry of a walked child list designates no node.
/// @throws std::runtime_error "cycle in the node hierarchy" when a walked node is among its own ancestors.
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

/// Walks a hierarchy like the function above, without a call where a node is left.
template <typename IsWalked, typename Enter>
std::size_t CheckHierarchy(const std::vector<Node>& nodes, std::int32_t start, IsWalked isWalked, Enter enter)
{
    return CheckHierarchy(nodes, start, isWalked, enter, [](std::int32_t) {});
}

}  // namespace Importing
