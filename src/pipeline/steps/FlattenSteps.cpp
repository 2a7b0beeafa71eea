#include <pipeline/steps/FlattenSteps.h>

#include <pipeline/steps/DropUnreachableNodes.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/steps/Facing.h>
#include <pipeline/steps/SkinSteps.h>

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Node;
using Importing::SceneContainer;

/// @return for each node [nodes] whether flattening leaves it alone: it, or a node above it, is animated.
std::vector<bool> FindKeptNodes(SceneContainer& scene, const NodeWalk& walk)
{
    std::vector<bool> kept(scene.NodeLibrary.size(), false);
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        const int parent = walk.parent[position];
        kept[position] = scene.NodeLibrary[position].GetAnimationID() != -1 ||
                         (parent >= 0 && kept[static_cast<std::size_t>(parent)]);
    }
    return kept;
}

/// Surfaces at the root are merged even where it is animated.
Changes SetSkinsAside(SceneContainer& scene, bool ignoreAnimation, std::vector<Node>& skins)
{
    std::vector<bool> kept(scene.NodeLibrary.size(), false);
    if (!ignoreAnimation)
        kept = FindKeptNodes(scene, WalkFromRoot(scene));
    if (Importing::IsValidIndex(scene.GetRootNodeIndex(), kept.size()))
        kept[static_cast<std::size_t>(scene.GetRootNodeIndex())] = false;
    skins = TakeSkinnedSurfaces(scene, kept);

    std::size_t surfaces = 0;
    for (const Node& node : skins)
        surfaces += node.SurfaceList.size();
    return {{"skinned surfaces kept apart", surfaces}};
}

/// The topmost animated nodes that are not children of the root, by parent.
std::map<int, std::vector<std::int32_t>> FindNodesToAnchor(SceneContainer& scene, const NodeWalk& walk)
{
    const std::vector<bool> kept = FindKeptNodes(scene, walk);
    std::map<int, std::vector<std::int32_t>> byParent;
    for (const int node : walk.order)
    {
        const int parent = walk.parent[static_cast<std::size_t>(node)];
        const bool belowRoot = parent >= 0 && parent != scene.GetRootNodeIndex();
        if (belowRoot && kept[static_cast<std::size_t>(node)] && !kept[static_cast<std::size_t>(parent)])
            byParent[parent].push_back(node);
    }
    return byParent;
}

int AnchorMark(const SceneContainer& scene) { return static_cast<int>(scene.AnimationLibrary.size()); }

void MoveUnderAnchor(SceneContainer& scene, int parent, const std::vector<std::int32_t>& nodes,
                     const D3DXMATRIX& placement)
{
    std::vector<std::int32_t>& siblings = At(scene.NodeLibrary, parent).ChildList;
    siblings.erase(
        std::remove_if(siblings.begin(), siblings.end(),
                       [&nodes](std::int32_t child) { return std::binary_search(nodes.begin(), nodes.end(), child); }),
        siblings.end());

    Node anchor;
    anchor.SetName(At(scene.NodeLibrary, parent).GetName());
    anchor.SetLocalTransform(Importing::Transform(placement));
    anchor.SetAnimationID(AnchorMark(scene));
    anchor.ChildList = nodes;
    scene.NodeLibrary.push_back(std::move(anchor));
    At(scene.NodeLibrary, scene.GetRootNodeIndex())
        .ChildList.push_back(static_cast<std::int32_t>(scene.NodeLibrary.size() - 1));
}

}  // namespace

void AddFlattenSteps(StepSequence& pipeline, const FlattenOptions& options)
{
    const auto skins = std::make_shared<std::vector<Node>>();
    if (!options.ignoreAnimation)
        pipeline.AddCounting("Drop skeleton nodes", LeaveSkeletonsToJoints);
    pipeline.AddCounting("Set skins aside", [options, skins](SceneContainer& scene) {
        return SetSkinsAside(scene, options.ignoreAnimation, *skins);
    });
    if (!options.ignoreAnimation)
        pipeline.Add("Anchor animated nodes", AnchorAnimatedNodes);
    pipeline.Add("Turn mirrored faces",
                 [options](SceneContainer& scene) { TurnMirroredFaces(scene, options.ignoreAnimation); });
    pipeline.Add("Flatten", [options](SceneContainer& scene) { Flatten(scene, options); });
    if (!options.ignoreAnimation)
        pipeline.Add("Release anchors", ReleaseAnchors);
    pipeline.Add("Put skins back", [skins](SceneContainer& scene) { HangBelowRoot(scene, std::exchange(*skins, {})); });
    pipeline.Add("Drop unreachable nodes", DropUnreachableNodes);
}

void AnchorAnimatedNodes(SceneContainer& scene)
{
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> matrices = MatricesInRootFrame(scene, walk);
    for (auto& [parent, nodes] : FindNodesToAnchor(scene, walk))
    {
        std::vector<std::int32_t> sorted = nodes;
        std::sort(sorted.begin(), sorted.end());
        MoveUnderAnchor(scene, parent, sorted, matrices[static_cast<std::size_t>(parent)]);
    }
}

void ReleaseAnchors(SceneContainer& scene)
{
    for (Node& node : scene.NodeLibrary)
    {
        if (node.GetAnimationID() == AnchorMark(scene))
            node.SetAnimationID(-1);
    }
}

void TurnMirroredFaces(SceneContainer& scene, bool ignoreAnimation)
{
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> matrices = MatricesInRootFrame(scene, walk);
    std::vector<bool> turned(scene.NodeLibrary.size(), false);
    const std::vector<bool> kept = ignoreAnimation ? turned : FindKeptNodes(scene, walk);
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        turned[position] = !kept[position] && IsMirroring(matrices[position]);
    }
    TurnFacesOfNodes(scene, walk, turned);
}

void Flatten(SceneContainer& scene, const FlattenOptions& options)
{
    const int root = scene.GetRootNodeIndex();
    if (root < 0)
        return;

    // One pass keeps every second level of a branch: a node stays when a child of it has just been collapsed.
    std::size_t nodesBefore = 0;
    do
    {
        nodesBefore = scene.NodeLibrary.size();
        const int target = scene.GetRootNodeIndex();  // erasing nodes may move the root
        scene.FlatHierarchy(target, Importing::Transform::Indentity, target, Importing::Transform::Indentity,
                            options.minSurfaces, options.maxVertices, options.ignoreAnimation);
    } while (scene.NodeLibrary.size() != nodesBefore);
}

}  // namespace Pipeline
