#include <pipeline/steps/DropUnreachableNodes.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace Pipeline
{

using Importing::At;
using Importing::Node;
using Importing::SceneContainer;

void DropUnreachableNodes(const WorkScene& work)
{
    SceneContainer& scene = work.container;
    const NodeWalk walk = WalkFromRoot(scene);
    std::vector<int> reached = walk.order;
    std::sort(reached.begin(), reached.end());

    std::vector<std::int32_t> newIndex(scene.NodeLibrary.size(), -1);
    std::vector<Node> nodes;
    nodes.reserve(reached.size());
    for (const int node : reached)
    {
        newIndex[static_cast<std::size_t>(node)] = static_cast<std::int32_t>(nodes.size());
        nodes.push_back(std::move(At(scene.NodeLibrary, node)));
    }
    for (Node& node : nodes)
    {
        for (std::int32_t& child : node.ChildList)
            child = At(newIndex, child);
    }
    if (!reached.empty())
        scene.SetRootNodeIndex(At(newIndex, scene.GetRootNodeIndex()));
    scene.NodeLibrary = std::move(nodes);
    MoveNodeEntries(work.supplement, reached);
}

}  // namespace Pipeline
