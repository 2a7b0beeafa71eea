// Every node that stays is an anchor, and the rigid nodes below it collapse into it. First everything that must not
// collapse is taken out of the hierarchy, so that each anchor is the root of a tree of its own, in which nothing is an
// exception. The tree of the scene's root collapses by SceneContainer::FlatHierarchy(). The others collapse by the
// operations that FlatHierarchy() consists of, because each call of it takes linear time in the whole node library.
// Then what was taken out is put back.

#include <pipeline/steps/FlattenScene.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/scene/VertexLayouts.h>
#include <pipeline/steps/Anchors.h>
#include <pipeline/steps/AttributeBaking.h>
#include <pipeline/steps/DropSkeletonNodes.h>
#include <pipeline/steps/DropUnreachableNodes.h>
#include <pipeline/steps/EqualizeMeshes.h>
#include <pipeline/steps/Facing.h>
#include <pipeline/steps/NodeTags.h>
#include <pipeline/steps/SpatialCells.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Node;
using Importing::SceneContainer;

/// How surfaces of one node are merged.
struct Merging
{
    const PrepareOptions& options;
    std::vector<int> cellOf;  ///< [surfaces] only those of one cell are merged; empty: there are no cells
};

/// What is taken out of a node before it collapses: surfaces whose meshes no matrix may be baked into, and child nodes
/// that stay.
struct Remains
{
    int origin = -1;  ///< index of the node before anything collapsed
    int anchor = -1;  ///< index of its anchor before anything collapsed
    Node node;        ///< with the transform of the node in the frame of its anchor
};

/// Moves the entries of a list that fulfil a condition to the end of another list, in order.
template <typename Condition>
void MoveIf(std::vector<std::int32_t>& from, std::vector<std::int32_t>& to, Condition condition)
{
    const auto first =
        std::stable_partition(from.begin(), from.end(), [&condition](std::int32_t index) { return !condition(index); });
    to.insert(to.end(), first, from.end());
    from.erase(first, from.end());
}

/// Takes out of all nodes what must not collapse. Frozen nodes keep everything.
std::vector<Remains> TakeOutRemains(const WorkScene& work, const NodeWalk& walk, const Anchors& anchors)
{
    std::vector<Remains> taken;
    for (const int index : walk.order)
    {
        if (IsFrozen(work.supplement, static_cast<std::size_t>(index)))
            continue;
        Node& node = At(work.container.NodeLibrary, index);
        Remains remains{index, At(anchors.of, index), {}};
        MoveIf(node.SurfaceList, remains.node.SurfaceList,
               [&work](std::int32_t surface) { return !IsBakeable(work, surface); });
        MoveIf(node.ChildList, remains.node.ChildList, [&anchors](std::int32_t child) { return anchors.Stays(child); });
        if (remains.node.SurfaceList.empty() && remains.node.ChildList.empty())
            continue;
        remains.node.SetName(node.GetName());
        remains.node.SetNote(node.GetNote());
        remains.node.SetLocalTransform(Importing::Transform(At(anchors.transforms, index)));
        taken.push_back(std::move(remains));
    }
    return taken;
}

/// Returns for each anchor the surfaces that are going to end in it.
std::vector<std::vector<std::int32_t>> CollapsingSurfaces(const WorkScene& work, const NodeWalk& walk,
                                                          const Anchors& anchors)
{
    std::vector<std::vector<std::int32_t>> surfaces(work.container.NodeLibrary.size());
    for (const int node : walk.order)
    {
        if (IsFrozen(work.supplement, static_cast<std::size_t>(node)))
            continue;
        const std::vector<std::int32_t>& list = At(work.container.NodeLibrary, node).SurfaceList;
        std::vector<std::int32_t>& target = At(surfaces, At(anchors.of, node));
        target.insert(target.end(), list.begin(), list.end());
    }
    std::erase_if(surfaces, [](const std::vector<std::int32_t>& list) { return list.empty(); });
    return surfaces;
}

/// Gives meshes that are going to be merged the same attributes.
void Equalize(const WorkScene& work, const NodeWalk& walk, const Anchors& anchors, const Merging& merging,
              Changes& changes)
{
    Equalized all;
    for (const std::vector<std::int32_t>& surfaces : CollapsingSurfaces(work, walk, anchors))
    {
        for (const std::vector<std::int32_t>& part : SplitByCell(surfaces, merging.cellOf))
        {
            const Equalized equalized = EqualizeMeshes(work, part, merging.options);
            all.flatNormals += equalized.flatNormals;
            all.droppedTangents += equalized.droppedTangents;
        }
    }
    if (all.flatNormals > 0)
        changes.push_back({"meshes without normals got flat ones for merging", all.flatNormals});
    if (all.droppedTangents > 0)
        changes.push_back({"meshes lost their tangents for merging", all.droppedTangents, "tangents"});
}

/// Bakes into normals and tangents what the container is not going to bake, or is going to bake wrongly.
void BakeAttributes(const WorkScene& work, const NodeWalk& walk, const Anchors& anchors)
{
    for (const int node : walk.order)
    {
        if (IsIdentity(At(anchors.transforms, node)))
            continue;
        const AttributeBaking baking(At(anchors.transforms, node));
        for (const std::int32_t surface : At(work.container.NodeLibrary, node).SurfaceList)
        {
            const auto mesh = static_cast<std::size_t>(At(work.container.SurfaceLibrary, surface).GetGeometryID());
            baking.PrepareNormals(work.container.GeometryLibrary[mesh]);
            baking.BakeTangents(work.container.GeometryLibrary[mesh],
                                EntryOr(work.supplement.layouts, mesh, VertexLayout()));
        }
    }
}

/// Flips the winding of the meshes that a mirroring matrix is going to be baked into.
void FlipMirroredMeshes(SceneContainer& scene, const NodeWalk& walk, const Anchors& anchors)
{
    std::vector<bool> flipped(scene.NodeLibrary.size(), false);
    for (const int node : walk.order)
        flipped[static_cast<std::size_t>(node)] = IsMirroring(At(anchors.transforms, node));
    FlipFacesOfNodes(scene, walk, flipped);
}

void MergeSurfacesOf(SceneContainer& scene, int node, const Merging& merging)
{
    const auto list = [&scene, node]() -> std::vector<std::int32_t>& {
        return At(scene.NodeLibrary, node).SurfaceList;
    };
    std::vector<std::int32_t> merged;
    for (std::vector<std::int32_t>& part : SplitByCell(list(), merging.cellOf))
    {
        list() = std::move(part);
        scene.MergeSurfaces(node, merging.options.minSurfaces, merging.options.maxVertices);
        merged.insert(merged.end(), list().begin(), list().end());
    }
    list() = std::move(merged);
}

/// Collapses the trees of all anchors but the root, and merges their surfaces.
void CollapseIntoAnchors(SceneContainer& scene, const NodeWalk& walk, const Anchors& anchors, const Merging& merging)
{
    const int root = scene.GetRootNodeIndex();
    for (const int node : walk.order)
    {
        const int anchor = At(anchors.of, node);
        if (anchor == root || anchor == node)
            continue;
        const D3DXMATRIX& transform = At(anchors.transforms, node);
        scene.MoveSurfaces(anchor, node, transform);
        scene.MoveCameras(anchor, node, transform);
        scene.MoveLights(anchor, node, transform);
    }
    for (const int anchor : anchors.order)
    {
        if (anchor == root)
            continue;
        MergeSurfacesOf(scene, anchor, merging);
        At(scene.NodeLibrary, anchor).ChildList.clear();
    }
}

/// One pass keeps every second level of a branch, since a node stays if a child of it has just collapsed.
void CollapseIntoRoot(SceneContainer& scene, const Merging& merging)
{
    constexpr int kNoMerging = std::numeric_limits<int>::max();  // no material has so many surfaces
    const int minSurfaces = merging.cellOf.empty() ? merging.options.minSurfaces : kNoMerging;
    std::size_t nodesBefore = 0;
    do
    {
        nodesBefore = scene.NodeLibrary.size();
        const int root = scene.GetRootNodeIndex();  // moves when nodes are erased
        scene.FlatHierarchy(root, Importing::Transform::Indentity, root, Importing::Transform::Indentity, minSurfaces,
                            merging.options.maxVertices, true);
    } while (scene.NodeLibrary.size() != nodesBefore);
    if (!merging.cellOf.empty())
        MergeSurfacesOf(scene, scene.GetRootNodeIndex(), merging);
}

std::vector<std::size_t> VertexCounts(const SceneContainer& scene)
{
    std::vector<std::size_t> counts;
    counts.reserve(scene.GeometryLibrary.size());
    for (const Importing::Geometry& geometry : scene.GeometryLibrary)
        counts.push_back(geometry.VertexArray.size());
    return counts;
}

/// A mesh that took others in is none of the host's meshes any more, and neither is one that was emptied.
void ForgetMergedMeshes(const WorkScene& work, const std::vector<std::size_t>& verticesBefore)
{
    for (std::size_t mesh = 0; mesh < verticesBefore.size(); ++mesh)
    {
        const Importing::Geometry& geometry = work.container.GeometryLibrary[mesh];
        const bool isMerged = geometry.VertexArray.size() != verticesBefore[mesh];
        if (isMerged && EntryOr(work.supplement.meshKeys, mesh, -1) >= 0)
            work.supplement.mergedMeshKeys.push_back(std::exchange(work.supplement.meshKeys[mesh], -1));
        if (isMerged && IsEmptied(geometry) && mesh < work.supplement.layouts.size())
            work.supplement.layouts[mesh] = {};
    }
}

/// Brings what was taken out back to its anchor: below a node with the transform of the collapsed node, or directly if
/// the node is the anchor itself, or if children need no such node.
/// @param origins  [nodes] the index of each node before the collapse; entries are added for added nodes
void PutRemainsBack(SceneContainer& scene, std::vector<Remains> taken, std::vector<int>& origins)
{
    std::vector<std::int32_t> newIndex(static_cast<std::size_t>(*std::max_element(origins.begin(), origins.end())) + 1);
    for (std::size_t node = 0; node < origins.size(); ++node)
        newIndex[static_cast<std::size_t>(origins[node])] = static_cast<std::int32_t>(node);

    for (Remains& remains : taken)
    {
        for (std::int32_t& child : remains.node.ChildList)
            child = At(newIndex, child);
        Node& anchor = At(scene.NodeLibrary, At(newIndex, remains.anchor));
        const bool isPlain =
            remains.node.SurfaceList.empty() && IsIdentity(remains.node.GetLocalTransform().GetMatrix());
        if (remains.origin == remains.anchor || isPlain)
        {
            anchor.SurfaceList.insert(anchor.SurfaceList.end(), remains.node.SurfaceList.begin(),
                                      remains.node.SurfaceList.end());
            anchor.ChildList.insert(anchor.ChildList.end(), remains.node.ChildList.begin(),
                                    remains.node.ChildList.end());
            continue;
        }
        anchor.ChildList.push_back(static_cast<std::int32_t>(scene.NodeLibrary.size()));
        scene.NodeLibrary.push_back(std::move(remains.node));
        origins.push_back(remains.origin);
    }
}

std::size_t CountSurfaces(const std::vector<Remains>& taken)
{
    std::size_t count = 0;
    for (const Remains& remains : taken)
        count += remains.node.SurfaceList.size();
    return count;
}

}  // namespace

Changes FlattenScene(const WorkScene& work, const PrepareOptions& options, const PartListener& /*listener*/)
{
    SceneContainer& scene = work.container;
    if (!Importing::IsValidIndex(scene.GetRootNodeIndex(), scene.NodeLibrary.size()) ||
        IsFrozen(work.supplement, static_cast<std::size_t>(scene.GetRootNodeIndex())))
        return {};
    Changes changes;

    // (1) Drop nodes that only repeat joints.
    if (!options.ignoreAnimation)
        changes.push_back({"skeleton nodes dropped", DropSkeletonNodes(work)});

    // (2) Take out what must not collapse: surfaces of skinned and pinned meshes, and the nodes that stay.
    const NodeWalk walk = WalkFromRoot(scene);
    const Anchors anchors = FindAnchors(work, walk, options.ignoreAnimation);
    const Merging merging{options,
                          options.cellSize > 0 ? FindCells(scene, walk, options.cellSize) : std::vector<int>()};
    std::vector<Remains> taken = TakeOutRemains(work, walk, anchors);
    changes.push_back({"skinned or pinned surfaces kept apart", CountSurfaces(taken)});

    // (3) Prepare meshes for merging, and for the matrices that are going to be baked into them. Flat normals are those
    //     of the winding that viewers flip where a matrix mirrors, so they come before the winding is flipped here.
    Equalize(work, walk, anchors, merging, changes);
    BakeAttributes(work, walk, anchors);
    FlipMirroredMeshes(scene, walk, anchors);

    // (4) Collapse, and find out where the nodes went.
    const std::vector<std::size_t> verticesBefore = VertexCounts(scene);
    CollapseIntoAnchors(scene, walk, anchors, merging);
    std::vector<int> origins;
    {
        NodeTags tags(scene);
        CollapseIntoRoot(scene, merging);
        origins = tags.Origins();
    }
    ForgetMergedMeshes(work, verticesBefore);

    // (5) Put back what was taken out.
    PutRemainsBack(scene, std::move(taken), origins);
    MoveNodeEntries(work.supplement, origins);

    // (6) Drop what is left of collapsed branches.
    DropUnreachableNodes(work);
    return changes;
}

}  // namespace Pipeline
