#include <models/SceneModels.h>

#include <importing/base/ForReading.h>

#include <algorithm>
#include <cctype>
#include <set>

namespace Models
{
namespace
{

using namespace Importing;

D3DXMATRIX Times(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    D3DXMATRIX product;
    return *D3DXMatrixMultiply(&product, &a, &b);
}

D3DXMATRIX LocalMatrix(const SceneContainer& scene, int node)
{
    return ForReading(At(scene.NodeLibrary, node)).GetLocalTransform().GetMatrix();
}

template <typename Record>
void MoveWithOffset(std::vector<Record>& library, std::vector<std::int32_t>& to, std::vector<std::int32_t>& from,
                    const D3DXMATRIX& matrix)
{
    for (const std::int32_t index : from)
    {
        Record& record = At(library, index);
        record.SetOffsetMatrix(Transform(Times(record.GetOffsetMatrix().GetMatrix(), matrix)));
        to.push_back(index);
    }
    from.clear();
}

bool ExceedsLimit(const Geometry& a, const Geometry& b, int maxVertices)
{
    const auto limit = static_cast<std::uint64_t>(static_cast<std::int64_t>(maxVertices));
    return std::uint64_t{a.VertexArray.size()} + std::uint64_t{b.VertexArray.size()} > limit;
}

/// Merges later surfaces of the list into the one at position base.
void MergeInto(SceneContainer& scene, std::vector<std::int32_t>& list, std::size_t base, int count, int minSurfaces,
               int maxVertices, std::vector<std::int32_t>& erased)
{
    int merged = 0;
    for (std::size_t j = base + 1; j < list.size();)
    {
        Surface surface = At(scene.SurfaceLibrary, list[base]);
        Surface& candidate = At(scene.SurfaceLibrary, list[j]);
        if (minSurfaces > 0 && !surface.IsSameMaterialAndMaps(candidate))
        {
            ++j;
            continue;
        }
        Geometry& geometry = At(scene.GeometryLibrary, surface.GetGeometryID());
        geometry.SetName("");
        Geometry& added = At(scene.GeometryLibrary, candidate.GetGeometryID());
        if (ExceedsLimit(geometry, added, maxVertices))
            return;
        geometry.Append(Geometry(added));
        added.Release();
        erased.push_back(list[j]);
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(j));
        ++merged;
        if (minSurfaces != 0 && count == merged - 1)
            return;
    }
}

}  // namespace

void EraseNode(SceneContainer& scene, int index)
{
    CheckIndex(index, scene.NodeLibrary.size());
    const int last = static_cast<int>(scene.NodeLibrary.size()) - 1;
    At(scene.NodeLibrary, index) = Node(scene.NodeLibrary.back());
    scene.NodeLibrary.pop_back();
    for (Node& node : scene.NodeLibrary)
    {
        std::vector<std::int32_t> children;
        for (const std::int32_t child : node.ChildList)
            if (child != index)
                children.push_back(child == last ? index : child);
        node.ChildList = children;
    }
    if (scene.GetRootNodeIndex() == last)
        scene.SetRootNodeIndex(index);
}

int FindParent(const SceneContainer& scene, int index)
{
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
        for (const std::int32_t child : scene.NodeLibrary[node].ChildList)
            if (child == index)
                return static_cast<int>(node);
    return -1;
}

D3DXMATRIX GlobalMatrix(const SceneContainer& scene, int index)
{
    const int parent = FindParent(scene, index);
    if (parent == -1)
        return LocalMatrix(scene, index);
    return Times(LocalMatrix(scene, index), GlobalMatrix(scene, parent));
}

int AddMaterial(SceneContainer& scene, Material& material)
{
    for (std::size_t i = 0; i < scene.MaterialLibrary.size(); ++i)
        if (scene.MaterialLibrary[i].operator==(material))
            return static_cast<int>(i);
    scene.MaterialLibrary.push_back(material);
    return static_cast<int>(scene.MaterialLibrary.size()) - 1;
}

int AddTexture(SceneContainer& scene, const std::string& texture)
{
    static const std::string kBlanks = " \t\v\r\n";
    std::string name = texture;
    for (char& character : name)
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    while (!name.empty() && kBlanks.find(name.front()) != std::string::npos)
        name.erase(name.begin());
    while (!name.empty() && kBlanks.find(name.back()) != std::string::npos)
        name.pop_back();
    const auto found = std::find(scene.TextureLibrary.begin(), scene.TextureLibrary.end(), name);
    const auto index = static_cast<int>(found - scene.TextureLibrary.begin());
    if (found == scene.TextureLibrary.end())
        scene.TextureLibrary.push_back(name);
    return index;
}

void MoveSurfaces(SceneContainer& scene, int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    if (toNode == fromNode)
        return;
    std::vector<std::int32_t>& to = At(scene.NodeLibrary, toNode).SurfaceList;
    std::vector<std::int32_t>& from = At(scene.NodeLibrary, fromNode).SurfaceList;
    for (const std::int32_t index : from)
    {
        At(scene.GeometryLibrary, At(scene.SurfaceLibrary, index).GetGeometryID()).Transform(matrix);
        to.push_back(index);
    }
    from.clear();
}

void MoveCameras(SceneContainer& scene, int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    if (toNode != fromNode)
        MoveWithOffset(scene.CameraLibrary, At(scene.NodeLibrary, toNode).CameraList,
                       At(scene.NodeLibrary, fromNode).CameraList, matrix);
}

void MoveLights(SceneContainer& scene, int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    if (toNode != fromNode)
        MoveWithOffset(scene.LightLibrary, At(scene.NodeLibrary, toNode).LightList,
                       At(scene.NodeLibrary, fromNode).LightList, matrix);
}

void MergeSurfaces(SceneContainer& scene, int node, int minSurfaces, int maxVertices)
{
    std::vector<std::int32_t>& list = At(scene.NodeLibrary, node).SurfaceList;
    std::map<int, int> counts;
    for (const std::int32_t index : list)
        ++counts[At(scene.SurfaceLibrary, index).GetMaterialID()];

    std::vector<std::int32_t> erased;
    for (std::size_t i = 0; i < list.size(); ++i)
    {
        const int count = counts[At(scene.SurfaceLibrary, list[i]).GetMaterialID()];
        if ((minSurfaces != 0 && count == 1) || count < minSurfaces)
            continue;
        MergeInto(scene, list, i, count, minSurfaces, maxVertices, erased);
    }
    std::sort(erased.begin(), erased.end());
    for (auto index = erased.rbegin(); index != erased.rend(); ++index)
        At(scene.SurfaceLibrary, *index).Release();
}

int FlatHierarchyInternal(SceneContainer& scene, Flattening& flattening, int node, const D3DXMATRIX& nodeMatrix)
{
    if (!flattening.ignoreAnimation && At(scene.NodeLibrary, node).GetAnimationID() != -1)
        return 1;
    int childCollapsed = 0;
    for (std::size_t i = 0; i < At(scene.NodeLibrary, node).ChildList.size();)
    {
        const std::int32_t child = At(scene.NodeLibrary, node).ChildList[i];
        const D3DXMATRIX childMatrix = Times(LocalMatrix(scene, child), nodeMatrix);
        if (FlatHierarchyInternal(scene, flattening, child, childMatrix) != 0)
        {
            ++i;
            continue;
        }
        childCollapsed = 1;
        std::vector<std::int32_t>& children = At(scene.NodeLibrary, node).ChildList;
        children.erase(children.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (node == flattening.targetNode)
        return childCollapsed;
    const D3DXMATRIX moveMatrix = Times(nodeMatrix, flattening.targetMatrix);
    MoveSurfaces(scene, flattening.targetNode, node, moveMatrix);
    MoveCameras(scene, flattening.targetNode, node, moveMatrix);
    MoveLights(scene, flattening.targetNode, node, moveMatrix);
    if (childCollapsed == 1)
        return 1;
    flattening.erased.push_back(static_cast<std::uint32_t>(node));
    return 0;
}

void FlatHierarchy(SceneContainer& scene, Flattening flattening, int startNode, const D3DXMATRIX& startMatrix,
                   int minSurfaces, int maxVertices)
{
    FlatHierarchyInternal(scene, flattening, startNode, startMatrix);
    MergeSurfaces(scene, flattening.targetNode, minSurfaces, maxVertices);
    const int root = scene.GetRootNodeIndex();
    if (flattening.targetNode == root && scene.NodeLibrary.size() - flattening.erased.size() == 1)
    {
        const Node kept = At(scene.NodeLibrary, root);
        scene.NodeLibrary.clear();
        scene.NodeLibrary.push_back(kept);
        scene.SetRootNodeIndex(0);
        return;
    }
    std::sort(flattening.erased.begin(), flattening.erased.end());
    for (auto index = flattening.erased.rbegin(); index != flattening.erased.rend(); ++index)
        EraseNode(scene, static_cast<int>(*index));
}

void CreateSurfaceNames(SceneContainer& scene)
{
    for (Surface& surface : scene.SurfaceLibrary)
    {
        const int geometry = surface.GetGeometryID();
        const int material = surface.GetMaterialID();
        const std::string meshName = geometry == -1 ? "" : At(scene.GeometryLibrary, geometry).GetName();
        const std::string materialName = material == -1 ? "" : At(scene.MaterialLibrary, material).GetName();
        surface.SetName(meshName.empty() ? materialName : meshName + "\r\n" + materialName);
    }
}

}  // namespace Models
