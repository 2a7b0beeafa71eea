#include <pipeline/steps/SkinSteps.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/steps/DropUnreachableNodes.h>

#include <algorithm>
#include <utility>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Node;
using Importing::SceneContainer;

/// @return for each node [nodes] whether it, with all that lies below it, says nothing but what joints say.
std::vector<bool> FindSkeletonBranches(SceneContainer& scene, const NodeWalk& walk)
{
    const std::vector<bool> isJoint = FindJointNodes(scene, walk);
    std::vector<bool> holdsJoint = isJoint;
    std::vector<bool> holdsMore(scene.NodeLibrary.size(), false);
    std::vector<bool> isSkeleton(scene.NodeLibrary.size(), false);
    for (auto node = walk.order.rbegin(); node != walk.order.rend(); ++node)  // children first
    {
        const auto position = static_cast<std::size_t>(*node);
        const Node& record = scene.NodeLibrary[position];
        const bool isEmpty = record.SurfaceList.empty() && record.CameraList.empty() && record.LightList.empty();
        if (!isEmpty || (record.GetAnimationID() >= 0 && !isJoint[position]))
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

Changes LeaveSkeletonsToJoints(SceneContainer& scene)
{
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<bool> isSkeleton = FindSkeletonBranches(scene, walk);
    const std::size_t before = scene.NodeLibrary.size();
    bool isAnyLeft = false;
    for (const int node : walk.order)
    {
        std::vector<std::int32_t>& children = At(scene.NodeLibrary, node).ChildList;
        const auto end = std::remove_if(children.begin(), children.end(), [&](std::int32_t child) {
            return isSkeleton[static_cast<std::size_t>(child)];
        });
        isAnyLeft = isAnyLeft || end != children.end();
        children.erase(end, children.end());
    }
    if (isAnyLeft)
        DropUnreachableNodes(scene);
    return {{"nodes left to joints", isAnyLeft ? before - scene.NodeLibrary.size() : 0}};
}

std::vector<Node> TakeSkinnedSurfaces(SceneContainer& scene, const std::vector<bool>& kept)
{
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> matrices = MatricesInRootFrame(scene, walk);
    std::vector<Node> taken;
    for (const int index : walk.order)
    {
        if (kept[static_cast<std::size_t>(index)])
            continue;
        Node& node = At(scene.NodeLibrary, index);
        const auto first = std::stable_partition(node.SurfaceList.begin(), node.SurfaceList.end(),
                                                 [&](std::int32_t surface) { return !IsSkinned(scene, surface); });
        if (first == node.SurfaceList.end())
            continue;
        Node still;
        still.SetName(node.GetName());
        still.SetLocalTransform(Importing::Transform(At(matrices, index)));
        still.SurfaceList.assign(first, node.SurfaceList.end());
        node.SurfaceList.erase(first, node.SurfaceList.end());
        taken.push_back(std::move(still));
    }
    return taken;
}

void HangBelowRoot(SceneContainer& scene, std::vector<Node> nodes)
{
    for (Node& node : nodes)
    {
        At(scene.NodeLibrary, scene.GetRootNodeIndex())
            .ChildList.push_back(static_cast<std::int32_t>(scene.NodeLibrary.size()));
        scene.NodeLibrary.push_back(std::move(node));
    }
}

}  // namespace Pipeline
