// One depth-first walk that moves the objects of every node straight to the target with its accumulated matrix, so that
// each vertex is transformed once regardless of the depth. The literal form calls itself through the virtual table for
// every level, erases collapsed children one by one and then erases nodes one by one; each of these is quadratic on
// wide or deep scenes, and recursion overflows on deep ones. A plain container uses an explicit stack, compacts each
// child list in one pass and erases all nodes at once. Everything that the walk looks up is checked first.
// Cost: linear in nodes, objects and vertices, plus sorting the collapsed nodes.

#include <brindle/ShowDebugMessage.h>
#include <importing/base/CheckedAccess.h>
#include <importing/math/Products.h>
#include <importing/plugin/HierarchyCheck.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/processing/EraseNodes.h>
#include <importing/processing/MergePlan.h>
#include <importing/processing/TickTimer.h>

#include <algorithm>
#include <utility>

namespace Importing
{
namespace
{

/// Returns whether a node is skipped with all nodes below it, because it is animated.
bool IsKeptWhole(const Node& node, bool ignoreAnimation) { return !ignoreAnimation && node.GetAnimationID() != -1; }

/// Checks the lists of a node whose objects will be moved.
void CheckObjects(const SceneContainer& scene, const Node& node)
{
    for (const std::int32_t surface : node.SurfaceList)
        CheckIndex(At(scene.SurfaceLibrary, surface).GetGeometryID(), scene.GeometryLibrary.size());
    CheckIndices(node.CameraList, scene.CameraLibrary.size());
    CheckIndices(node.LightList, scene.LightLibrary.size());
}

void MoveObjects(SceneContainer& scene, int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    scene.MoveSurfaces(toNode, fromNode, matrix);
    scene.MoveCameras(toNode, fromNode, matrix);
    scene.MoveLights(toNode, fromNode, matrix);
}

/// The walk of a plain container: the literal recursion with an explicit stack.
///
/// Children that stay are moved to the front of their list as they are visited, so that removing the collapsed ones
/// costs one pass over the list instead of one for each.
class Flattening
{
public:
    Flattening(SceneContainer& scene, int targetNode, const D3DXMATRIX& targetMatrix,
               std::vector<std::uint32_t>& erased, bool ignoreAnimation)
        : scene_(scene), targetNode_(targetNode), targetMatrix_(targetMatrix), erased_(erased),
          ignoreAnimation_(ignoreAnimation)
    {}

    int Run(int start, const D3DXMATRIX& startMatrix)
    {
        if (IsKeptWhole(At(scene_.NodeLibrary, start), ignoreAnimation_))
            return 1;
        path_.reserve(Check(start));

        path_.push_back({startMatrix, start, 0, 0, false});
        while (true)
        {
            if (Descend())
                continue;
            const int result = Leave();
            if (path_.empty())
                return result;
            NoteChild(result);
        }
    }

private:
    struct Level
    {
        D3DXMATRIX matrix;
        int node;
        std::uint32_t nextChild;
        std::uint32_t keptChildren;
        bool childCollapsed;
    };

    Node& NodeAt(int index) { return scene_.NodeLibrary[static_cast<std::size_t>(index)]; }

    /// Checks everything that the walk will look up, so that a bad index or a cycle changes nothing.
    /// Returns the number of levels.
    std::size_t Check(int start) const
    {
        CheckIndex(targetNode_, scene_.NodeLibrary.size());
        return CheckHierarchy(
            scene_.NodeLibrary, start, [this](const Node& node) { return !IsKeptWhole(node, ignoreAnimation_); },
            [this](std::int32_t node) {
                if (node != targetNode_)
                    CheckObjects(scene_, At(scene_.NodeLibrary, node));
            });
    }

    /// Handles the next child of the current node: enters it, or skips it if it is kept whole. Returns false when the
    /// node has no more children.
    bool Descend()
    {
        const Level& level = path_.back();
        const std::vector<std::int32_t>& children = NodeAt(level.node).ChildList;
        if (level.nextChild == children.size())
            return false;

        const int child = children[level.nextChild];
        Node& node = NodeAt(child);
        if (IsKeptWhole(node, ignoreAnimation_))
            NoteChild(1);
        else
            path_.push_back({Product(node.GetLocalTransform().GetMatrix(), level.matrix), child, 0, 0, false});
        return true;
    }

    /// Keeps the current child in its list, or drops it if it was collapsed.
    void NoteChild(int result)
    {
        Level& level = path_.back();
        std::vector<std::int32_t>& children = NodeAt(level.node).ChildList;
        if (result == 0)
            level.childCollapsed = true;
        else
            children[level.keptChildren++] = children[level.nextChild];
        ++level.nextChild;
    }

    /// Leaves the current node: moves its objects and queues it for erasure unless it stays. Returns what the literal
    /// recursion returns for the node.
    int Leave()
    {
        const Level level = path_.back();
        path_.pop_back();
        NodeAt(level.node).ChildList.resize(level.keptChildren);
        if (level.node == targetNode_)
            return level.childCollapsed ? 1 : 0;

        MoveObjects(scene_, targetNode_, level.node, Product(level.matrix, targetMatrix_));
        if (level.childCollapsed)
            return 1;
        erased_.push_back(static_cast<std::uint32_t>(level.node));
        return 0;
    }

    SceneContainer& scene_;
    int targetNode_;
    D3DXMATRIX targetMatrix_;
    std::vector<std::uint32_t>& erased_;
    bool ignoreAnimation_;
    std::vector<Level> path_;
};

/// The walk of a derived container: every level is a call through the virtual table.
int FlattenLiterally(SceneContainer& scene, int targetNode, const D3DXMATRIX& targetMatrix, int nodeIndex,
                     const D3DXMATRIX& nodeMatrix, std::vector<std::uint32_t>& erased, bool ignoreAnimation)
{
    // Overrides may change the library, so nodes are looked up again each time.
    const auto children = [&scene, nodeIndex]() -> std::vector<std::int32_t>& {
        return At(scene.NodeLibrary, nodeIndex).ChildList;
    };
    if (IsKeptWhole(At(scene.NodeLibrary, nodeIndex), ignoreAnimation))
        return 1;

    int childCollapsed = 0;
    for (std::size_t i = 0; i < children().size();)
    {
        const int child = children()[i];
        const D3DXMATRIX local = At(scene.NodeLibrary, child).GetLocalTransform().GetMatrix();
        if (scene.FlatHierarchyInternal(targetNode, targetMatrix, child, Product(local, nodeMatrix), erased,
                                        ignoreAnimation) != 0)
        {
            ++i;
            continue;
        }
        childCollapsed = 1;
        CheckIndex(i, children().size());
        children().erase(children().begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (nodeIndex == targetNode)
        return childCollapsed;

    MoveObjects(scene, targetNode, nodeIndex, Product(nodeMatrix, targetMatrix));
    if (childCollapsed != 0)
        return 1;
    erased.push_back(static_cast<std::uint32_t>(nodeIndex));
    return 0;
}

/// Returns the target's surface list as it will be after all objects have been moved, in the order of the walk:
/// children before parents.
std::vector<std::int32_t> ListAfterMoving(const SceneContainer& scene, int targetNode, int startNode,
                                          bool ignoreAnimation)
{
    std::vector<std::int32_t> list = At(scene.NodeLibrary, targetNode).SurfaceList;
    CheckHierarchy(
        scene.NodeLibrary, startNode,
        [ignoreAnimation](const Node& node) { return !IsKeptWhole(node, ignoreAnimation); }, [](std::int32_t) {},
        [&](std::int32_t node) {
            const std::vector<std::int32_t>& moved = At(scene.NodeLibrary, node).SurfaceList;
            if (node != targetNode)
                list.insert(list.end(), moved.begin(), moved.end());
        });
    return list;
}

/// Checks the target's own surfaces. Merging looks up their meshes only after everything has been moved. A bad mesh
/// index is an error only if merging looks it up, so in that rare case the merge is planned here, in advance.
void CheckOwnSurfaces(const SceneContainer& scene, int targetNode, int startNode, int minSurfaces, int maxVertices,
                      bool ignoreAnimation)
{
    bool allHaveMeshes = true;
    for (const std::int32_t surface : At(scene.NodeLibrary, targetNode).SurfaceList)
        allHaveMeshes &= IsValidIndex(At(scene.SurfaceLibrary, surface).GetGeometryID(), scene.GeometryLibrary.size());
    if (!allHaveMeshes)
        PlanMerges(ListAfterMoving(scene, targetNode, startNode, ignoreAnimation), scene.SurfaceLibrary,
                   scene.GeometryLibrary, minSurfaces, maxVertices);
}

/// Returns whether every node but the root was collapsed, with the root as the target.
bool OnlyRootRemains(const SceneContainer& scene, int targetNode, const std::vector<std::uint32_t>& collapsed)
{
    return targetNode == scene.GetRootNodeIndex() && scene.NodeLibrary.size() - collapsed.size() == 1;
}

void KeepOnlyNode(SceneContainer& scene, int index)
{
    Node node = std::move(At(scene.NodeLibrary, index));
    scene.NodeLibrary.clear();
    scene.NodeLibrary.push_back(std::move(node));
    scene.SetRootNodeIndex(0);
}

}  // namespace

int SceneContainer::FlatHierarchy(int targetNode, const D3DXMATRIX& targetMatrix, int startNode,
                                  const D3DXMATRIX& startMatrix, int minSurfaces, int maxVertices, bool ignoreAnimation)
{
    if (IsPlain(*this))
        CheckOwnSurfaces(*this, targetNode, startNode, minSurfaces, maxVertices, ignoreAnimation);
    std::vector<std::uint32_t> collapsed;

    const TickTimer flattening;
    FlatHierarchyInternal(targetNode, targetMatrix, startNode, startMatrix, collapsed, ignoreAnimation);
    ShowDebugMessage("Flatten node finished :", flattening.ElapsedMilliseconds());

    const TickTimer merging;
    MergeSurfaces(targetNode, minSurfaces, maxVertices);
    ShowDebugMessage("Merging finished :", merging.ElapsedMilliseconds());

    if (OnlyRootRemains(*this, targetNode, collapsed))
    {
        KeepOnlyNode(*this, targetNode);
        return 0;
    }
    std::sort(collapsed.begin(), collapsed.end());
    if (IsPlain(*this))
    {
        EraseNodes(NodeLibrary, rootNodeIndex_, collapsed);
        return 0;
    }
    for (auto node = collapsed.rbegin(); node != collapsed.rend(); ++node)
        EraseNodeFromLibrary(static_cast<int>(*node));
    return 0;
}

int SceneContainer::FlatHierarchyInternal(int targetNode, const D3DXMATRIX& targetMatrix, int node,
                                          const D3DXMATRIX& nodeMatrix, std::vector<std::uint32_t>& erased,
                                          bool ignoreAnimation)
{
    if (IsPlain(*this))
        return Flattening(*this, targetNode, targetMatrix, erased, ignoreAnimation).Run(node, nodeMatrix);
    return FlattenLiterally(*this, targetNode, targetMatrix, node, nodeMatrix, erased, ignoreAnimation);
}

}  // namespace Importing
