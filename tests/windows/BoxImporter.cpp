// An importer in a separate library that a host loads. It gets a channel, and fills and processes its scene.

#include <importing/plugin/SceneContainer.h>

#include <cstddef>

namespace
{

using Importing::Geometry;
using Importing::Node;
using Importing::SceneContainer;
using Importing::Surface;
using Importing::Transform;

constexpr int kBoxes = 3;

/// Returns the cube from 0 to 1.
Geometry Box()
{
    Geometry mesh;
    for (int corner = 0; corner < 8; ++corner)
        mesh.VertexArray.emplace_back(static_cast<float>(corner & 1), static_cast<float>(corner >> 1 & 1),
                                      static_cast<float>(corner >> 2));
    mesh.IndexArray = {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                       2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
    mesh.ComputeNormals();
    return mesh;
}

void AddNode(SceneContainer& scene, const Node& node)
{
    scene.NodeLibrary.push_back(node);
    if (scene.NodeLibrary.size() > 1)
        scene.NodeLibrary.front().ChildList.push_back(static_cast<int>(scene.NodeLibrary.size() - 1));
}

void Fill(SceneContainer& scene)
{
    AddNode(scene, Node());
    scene.SetRootNodeIndex(0);
    for (int number = 0; number < kBoxes; ++number)
    {
        Geometry mesh = Box();
        Surface surface;
        surface.SetGeometryID(scene.AddGeometryToLibrary(mesh, false));
        Node node;
        node.SurfaceList.push_back(scene.AddSurfaceToLibrary(surface, false));
        D3DXMATRIX placement;
        node.SetLocalTransform(*D3DXMatrixTranslation(&placement, 2.0F * static_cast<float>(number), 0, 0));
        AddNode(scene, node);
    }
}

/// Returns whether one node with one surface remains, which contains all boxes.
bool IsFlat(SceneContainer& scene, std::size_t vertices)
{
    if (scene.NodeLibrary.size() != 1 || scene.NodeLibrary.front().SurfaceList.size() != 1)
        return false;
    const int surface = scene.NodeLibrary.front().SurfaceList.front();
    const int mesh = scene.SurfaceLibrary.at(static_cast<std::size_t>(surface)).GetGeometryID();
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
    scene.GetBoundingBox(min, max);
    return scene.GeometryLibrary.at(static_cast<std::size_t>(mesh)).VertexArray.size() == vertices && min.x == 0.0F &&
           max.x == 2.0F * kBoxes - 1.0F;
}

}  // namespace

/// @return 0; or the number of the step that failed.
extern "C" __declspec(dllexport) int ImportBoxes(Vyk_Channel* channel)
{
    auto* scene = dynamic_cast<SceneContainer*>(channel);
    if (scene == nullptr)
        return 1;
    Fill(*scene);
    const std::size_t vertices = kBoxes * scene->GeometryLibrary.front().VertexArray.size();
    scene->FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, 0, -1, true);
    return IsFlat(*scene, vertices) ? 0 : 2;
}
