#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace Pipeline
{

/// The path from a node up to the root. Finds where the paths of other nodes join it.
class NodePath
{
public:
    /// @param parents  [nodes] index of the parent, -1 for the root; as NodeWalk::parent
    NodePath(const std::vector<int>& parents, int node);

    /// The node, its parent, and so on up to the root.
    const std::vector<int>& Nodes() const { return nodes_; }

    bool Holds(int node) const { return heights_.count(node) > 0; }

    /// Returns the position on the path of the nearest common ancestor with another node: 0 for the path's own node;
    /// the length of the path if there is none, as for -1. A node is its own ancestor. Results are stored for every
    /// node on the way, so all calls together take time linear in the number of nodes.
    std::size_t HeightOfMeeting(int node);

private:
    const std::vector<int>& parents_;
    std::vector<int> nodes_;
    std::unordered_map<int, std::size_t> heights_;
    std::unordered_map<int, std::size_t> meetings_;
};

}  // namespace Pipeline
