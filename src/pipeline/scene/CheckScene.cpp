#include <pipeline/scene/CheckScene.h>

#include <importing/base/CheckedAccess.h>

#include <cstddef>
#include <stdexcept>
#include <vector>

namespace Pipeline
{

namespace
{

using Importing::CheckIndex;
using Importing::CheckIndices;
using Importing::SceneContainer;

void CheckIndexOrNone(int index, std::size_t count)
{
    if (index != -1)
        CheckIndex(index, count);
}

void CheckNodes(const SceneContainer& scene)
{
    for (const Importing::Node& node : scene.NodeLibrary)
    {
        CheckIndices(node.ChildList, scene.NodeLibrary.size());
        CheckIndices(node.SurfaceList, scene.SurfaceLibrary.size());
        CheckIndices(node.CameraList, scene.CameraLibrary.size());
        CheckIndices(node.LightList, scene.LightLibrary.size());
    }
}

/// Visits the nodes that are reachable from the root. A node that is visited twice has two parents or is in a cycle.
void CheckTree(const SceneContainer& scene)
{
    if (scene.GetRootNodeIndex() == -1)
        return;
    std::vector<bool> isReached(scene.NodeLibrary.size(), false);
    std::vector<std::int32_t> pending = {scene.GetRootNodeIndex()};
    while (!pending.empty())
    {
        const auto node = static_cast<std::size_t>(pending.back());
        pending.pop_back();
        if (isReached[node])
            throw std::runtime_error("a node of the hierarchy has two parents or is below itself");
        isReached[node] = true;
        const std::vector<std::int32_t>& children = scene.NodeLibrary[node].ChildList;
        pending.insert(pending.end(), children.begin(), children.end());
    }
}

}  // namespace

void CheckScene(const SceneContainer& scene)
{
    CheckIndexOrNone(scene.GetRootNodeIndex(), scene.NodeLibrary.size());
    CheckNodes(scene);
    CheckTree(scene);
    for (const Importing::Surface& surface : scene.SurfaceLibrary)
    {
        CheckIndexOrNone(surface.GetGeometryID(), scene.GeometryLibrary.size());
        CheckIndexOrNone(surface.GetMaterialID(), scene.MaterialLibrary.size());
    }
    for (const Importing::Geometry& geometry : scene.GeometryLibrary)
        CheckIndices(geometry.IndexArray, geometry.VertexArray.size());
}

}  // namespace Pipeline
