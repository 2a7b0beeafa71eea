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

bool IsKeptWhole(const Node& node, bool ignoreAnimation) { return !ignoreAnimation && node.GetAnimationID() != -1; }

/// Checks the objects of a node that is going to be moved.
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

/// The walk of a plain container: the literal recursion with a stack of its own.
///
/// Children that stay are moved to the front of their list as they are met, so that taking the collapsed ones out costs
/// one pass over the list and not one for each.
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

    /// Everything that the walk will look up, so that a bad reference or a cycle changes nothing.
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

    /// @return whether a child of the current node was entered, or passed over because it is kept whole.
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

    /// @return what the literal recursion returns for the node.
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

/// The walk of a derived container: every level is a call through the table.
int FlattenLiterally(SceneContainer& scene, int targetNode, const D3DXMATRIX& targetMatrix, int nodeIndex,
                     const D3DXMATRIX& nodeMatrix, std::vector<std::uint32_t>& erased, bool ignoreAnimation)
{
    // Overrides may change the library, so nodes are looked up anew each time.
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

/// Returns the target's surface list as it will be when all objects have been moved: children before parents, like the
/// walk of a plain container.
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

/// Checks the target's own surfaces, whose meshes merging looks up after everything has been moved. A bad mesh index is
/// an error only where merging meets it, so in that rare case the merging is planned in advance.
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
