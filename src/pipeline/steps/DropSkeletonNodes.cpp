// One pass from the leaves to the root finds for every node whether its branch contains a joint, and whether it
// contains anything else. Walking the branch of every node instead would be quadratic for a chain.

#include <pipeline/steps/DropSkeletonNodes.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/steps/DropUnreachableNodes.h>

#include <algorithm>
#include <vector>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Node;

/// Returns for each node [nodes] whether its branch consists of joints only.
std::vector<bool> FindSkeletonBranches(const WorkScene& work, const NodeWalk& walk)
{
    const std::vector<Node>& nodes = work.container.NodeLibrary;
    const std::vector<bool> isJoint = FindJointNodes(work.container, walk);
    std::vector<bool> holdsJoint = isJoint;
    std::vector<bool> holdsMore(nodes.size(), false);
    std::vector<bool> isSkeleton(nodes.size(), false);
    for (auto node = walk.order.rbegin(); node != walk.order.rend(); ++node)  // children first
    {
        const auto position = static_cast<std::size_t>(*node);
        const Node& record = nodes[position];
        const bool isEmpty = record.SurfaceList.empty() && record.CameraList.empty() && record.LightList.empty();
        const bool isOtherwiseAnimated = record.GetAnimationID() >= 0 && !isJoint[position];
        if (!isEmpty || isOtherwiseAnimated || IsKept(work.supplement, position))
            holdsMore[position] = true;
        isSkeleton[position] = holdsJoint[position] && !holdsMore[position];
        if (walk.parent[position] < 0)
            continue;
        const auto parent = static_cast<std::size_t>(walk.parent[position]);
        holdsJoint[parent] = holdsJoint[parent] || holdsJoint[position];
        holdsMore[parent] = holdsMore[parent] || holdsMore[position];
    }
    return isSkeleton;
}

}  // namespace

std::size_t DropSkeletonNodes(const WorkScene& work)
{
    std::vector<Node>& nodes = work.container.NodeLibrary;
    const NodeWalk walk = WalkFromRoot(work.container);
    const std::vector<bool> isSkeleton = FindSkeletonBranches(work, walk);
    const std::size_t before = nodes.size();
    bool isAnyDropped = false;
    for (const int node : walk.order)
    {
        std::vector<std::int32_t>& children = At(nodes, node).ChildList;
        isAnyDropped |= std::erase_if(children, [&isSkeleton](std::int32_t child) {
                            return isSkeleton[static_cast<std::size_t>(child)];
                        }) > 0;
    }
    if (isAnyDropped)
        DropUnreachableNodes(work);
    return before - nodes.size();
}

}  // namespace Pipeline
