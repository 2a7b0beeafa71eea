// Everything that must not collapse is removed from the hierarchy first and put below the root again at the end. What
// remains is collapsed by SceneContainer::FlatHierarchy(), which then needs no exceptions.

#include <pipeline/steps/FlattenScene.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/Skeletons.h>
#include <pipeline/scene/VertexLayouts.h>
#include <pipeline/steps/AttributeBaking.h>
#include <pipeline/steps/DropSkeletonNodes.h>
#include <pipeline/steps/DropUnreachableNodes.h>
#include <pipeline/steps/EqualizeMeshes.h>
#include <pipeline/steps/Facing.h>
#include <pipeline/steps/NodeTags.h>

#include <algorithm>
#include <utility>

namespace Pipeline
{

namespace
{

using Importing::At;
using Importing::Node;
using Importing::SceneContainer;

/// What remains of a node that collapses: surfaces whose meshes no matrix may be baked into, and child nodes that stay.
struct Remains
{
    int origin = -1;  ///< index of the node before it collapsed
    Node node;        ///< with the node's transform in the frame of the root
};

/// Returns for each node [nodes] whether it stays: it, or a node above it, is animated or kept. The root is not asked.
std::vector<bool> FindStayingNodes(const WorkScene& work, const NodeWalk& walk, bool ignoreAnimation)
{
    std::vector<bool> stays(work.container.NodeLibrary.size(), false);
    for (const int node : walk.order)
    {
        const auto position = static_cast<std::size_t>(node);
        const int parent = walk.parent[position];
        if (parent < 0)
            continue;
        const bool isAnimated = work.container.NodeLibrary[position].GetAnimationID() != -1;
        stays[position] = stays[static_cast<std::size_t>(parent)] || IsKept(work.supplement, position) ||
                          (isAnimated && !ignoreAnimation);
    }
    return stays;
}

/// Moves the entries of a list that fulfil a condition to the end of another list, in order.
template <typename Condition>
void MoveIf(std::vector<std::int32_t>& from, std::vector<std::int32_t>& to, Condition condition)
{
    const auto first =
        std::stable_partition(from.begin(), from.end(), [&condition](std::int32_t index) { return !condition(index); });
    to.insert(to.end(), first, from.end());
    from.erase(first, from.end());
}

/// Takes out of collapsing nodes what must not collapse.
std::vector<Remains> TakeOutRemains(const WorkScene& work, const NodeWalk& walk, const std::vector<bool>& stays,
                                    const std::vector<D3DXMATRIX>& matrices)
{
    std::vector<Remains> taken;
    for (const int index : walk.order)
    {
        if (stays[static_cast<std::size_t>(index)])
            continue;
        Node& node = At(work.container.NodeLibrary, index);
        Remains remains{index, {}};
        MoveIf(node.SurfaceList, remains.node.SurfaceList,
               [&work](std::int32_t surface) { return !IsBakeable(work, surface); });
        MoveIf(node.ChildList, remains.node.ChildList,
               [&stays](std::int32_t child) { return stays[static_cast<std::size_t>(child)]; });
        if (remains.node.SurfaceList.empty() && remains.node.ChildList.empty())
            continue;
        remains.node.SetName(node.GetName());
        remains.node.SetNote(node.GetNote());
        remains.node.SetLocalTransform(Importing::Transform(At(matrices, index)));
        taken.push_back(std::move(remains));
    }
    return taken;
}

/// Returns the surfaces of nodes that collapse: those that are going to end in the root.
std::vector<std::int32_t> CollapsingSurfaces(const SceneContainer& scene, const NodeWalk& walk,
                                             const std::vector<bool>& stays)
{
    std::vector<std::int32_t> surfaces;
    for (const int node : walk.order)
    {
        const std::vector<std::int32_t>& list = At(scene.NodeLibrary, node).SurfaceList;
        if (!stays[static_cast<std::size_t>(node)])
            surfaces.insert(surfaces.end(), list.begin(), list.end());
    }
    return surfaces;
}

/// Bakes into normals and tangents what the container is not going to bake, or is going to bake wrongly.
void BakeAttributes(const WorkScene& work, const NodeWalk& walk, const std::vector<bool>& stays,
                    const std::vector<D3DXMATRIX>& matrices)
{
    for (const int node : walk.order)
    {
        if (stays[static_cast<std::size_t>(node)] || IsIdentity(At(matrices, node)))
            continue;
        const AttributeBaking baking(At(matrices, node));
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
void FlipMirroredMeshes(SceneContainer& scene, const NodeWalk& walk, const std::vector<bool>& stays,
                        const std::vector<D3DXMATRIX>& matrices)
{
    std::vector<bool> flipped(scene.NodeLibrary.size(), false);
    for (const int node : walk.order)
        flipped[static_cast<std::size_t>(node)] =
            !stays[static_cast<std::size_t>(node)] && IsMirroring(At(matrices, node));
    FlipFacesOfNodes(scene, walk, flipped);
}

/// One pass keeps every second level of a branch, since a node stays if a child of it has just collapsed.
void CollapseIntoRoot(SceneContainer& scene, const PrepareOptions& options)
{
    std::size_t nodesBefore = 0;
    do
    {
        nodesBefore = scene.NodeLibrary.size();
        const int root = scene.GetRootNodeIndex();  // moves when nodes are erased
        scene.FlatHierarchy(root, Importing::Transform::Indentity, root, Importing::Transform::Indentity,
                            options.minSurfaces, options.maxVertices, true);
    } while (scene.NodeLibrary.size() != nodesBefore);
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
        if (isMerged && mesh < work.supplement.meshKeys.size())
            work.supplement.meshKeys[mesh] = -1;
        if (isMerged && IsEmptied(geometry) && mesh < work.supplement.layouts.size())
            work.supplement.layouts[mesh] = {};
    }
}

/// Brings what was taken out back to the root: under a node with the transform of the collapsed node, or directly where
/// the node was the root, or where children need no such node.
/// @param origins  [nodes] the index of each node before the collapse; entries are added for added nodes
void PutRemainsBack(SceneContainer& scene, std::vector<Remains> taken, std::vector<int>& origins, int rootOrigin)
{
    std::vector<std::int32_t> newIndex(static_cast<std::size_t>(*std::max_element(origins.begin(), origins.end())) + 1);
    for (std::size_t node = 0; node < origins.size(); ++node)
        newIndex[static_cast<std::size_t>(origins[node])] = static_cast<std::int32_t>(node);

    for (Remains& remains : taken)
    {
        for (std::int32_t& child : remains.node.ChildList)
            child = At(newIndex, child);
        Node& root = At(scene.NodeLibrary, scene.GetRootNodeIndex());
        const bool isPlain =
            remains.node.SurfaceList.empty() && IsIdentity(remains.node.GetLocalTransform().GetMatrix());
        if (remains.origin == rootOrigin || isPlain)
        {
            root.SurfaceList.insert(root.SurfaceList.end(), remains.node.SurfaceList.begin(),
                                    remains.node.SurfaceList.end());
            root.ChildList.insert(root.ChildList.end(), remains.node.ChildList.begin(), remains.node.ChildList.end());
            continue;
        }
        root.ChildList.push_back(static_cast<std::int32_t>(scene.NodeLibrary.size()));
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
    if (!Importing::IsValidIndex(scene.GetRootNodeIndex(), scene.NodeLibrary.size()))
        return {};
    Changes changes;

    // (1) Drop nodes that only repeat joints.
    if (!options.ignoreAnimation)
        changes.push_back({"skeleton nodes dropped", DropSkeletonNodes(work)});

    // (2) Take out what must not collapse: surfaces of skinned and pinned meshes, and the topmost nodes that stay.
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> matrices = MatricesInRootFrame(scene, walk);
    const std::vector<bool> stays = FindStayingNodes(work, walk, options.ignoreAnimation);
    const int rootBefore = scene.GetRootNodeIndex();
    std::vector<Remains> taken = TakeOutRemains(work, walk, stays, matrices);
    changes.push_back({"skinned or pinned surfaces kept apart", CountSurfaces(taken)});

    // (3) Prepare meshes for merging, and for the matrices that are going to be baked into them. Flat normals are those
    //     of the winding that viewers flip where a matrix mirrors, so they come before the winding is flipped here.
    const Equalized equalized = EqualizeMeshes(work, CollapsingSurfaces(scene, walk, stays), options);
    if (equalized.flatNormals > 0)
        changes.push_back({"meshes without normals got flat ones for merging", equalized.flatNormals});
    if (equalized.droppedTangents > 0)
        changes.push_back({"meshes lost their tangents for merging", equalized.droppedTangents, "tangents"});
    BakeAttributes(work, walk, stays, matrices);
    FlipMirroredMeshes(scene, walk, stays, matrices);

    // (4) Collapse, and find out where the nodes went.
    const std::vector<std::size_t> verticesBefore = VertexCounts(scene);
    std::vector<int> origins;
    {
        NodeTags tags(scene);
        CollapseIntoRoot(scene, options);
        origins = tags.Origins();
    }
    ForgetMergedMeshes(work, verticesBefore);

    // (5) Put back what was taken out.
    PutRemainsBack(scene, std::move(taken), origins, rootBefore);
    MoveNodeEntries(work.supplement, origins);

    // (6) Drop what is left of collapsed branches.
    DropUnreachableNodes(work);
    return changes;
}

}  // namespace Pipeline
