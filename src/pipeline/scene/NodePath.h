#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace Pipeline
{

/// The way from a node up to the root, and where the ways of other nodes join it.
class NodePath
{
public:
    /// @param parents  [nodes] index of the parent, -1 for the root; as NodeWalk::parent
    NodePath(const std::vector<int>& parents, int node);

    /// The node, its parent and so on; the last is the root.
    const std::vector<int>& Nodes() const { return nodes_; }

    bool Holds(int node) const { return heights_.count(node) > 0; }

    /// @return how many steps above the path's node the way up from another node joins the path, the other node
    ///         included; the length of the path when it never does, as for -1. A way is walked once.
    std::size_t HeightOfMeeting(int node);

private:
    const std::vector<int>& parents_;
    std::vector<int> nodes_;
    std::unordered_map<int, std::size_t> heights_;
    std::unordered_map<int, std::size_t> meetings_;
};

}  // namespace Pipeline
