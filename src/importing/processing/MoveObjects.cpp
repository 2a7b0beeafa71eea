#include <importing/base/CheckedAccess.h>
#include <importing/math/Products.h>
#include <importing/plugin/SceneContainer.h>

namespace Importing
{
namespace
{

/// Appends the entries of one list to another and empties the first.
void MoveEntries(std::vector<std::int32_t>& to, std::vector<std::int32_t>& from)
{
    to.insert(to.end(), from.begin(), from.end());
    from.clear();
}

/// Moves cameras or lights. Their offset matrix is multiplied by the matrix from the right.
template <typename Record>
void MoveAttached(SceneContainer& scene, std::vector<Record>& library, std::vector<std::int32_t> Node::*list,
                  int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    std::vector<std::int32_t>& to = At(scene.NodeLibrary, toNode).*list;
    std::vector<std::int32_t>& from = At(scene.NodeLibrary, fromNode).*list;
    if (toNode == fromNode)
        return;
    CheckIndices(from, library.size());

    for (const std::int32_t index : from)
    {
        Record& record = library[static_cast<std::size_t>(index)];
        record.SetOffsetMatrix(Transform(Product(record.GetOffsetMatrix().GetMatrix(), matrix)));
    }
    MoveEntries(to, from);
}

}  // namespace

int SceneContainer::MoveSurfaces(int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    std::vector<std::int32_t>& to = At(NodeLibrary, toNode).SurfaceList;
    std::vector<std::int32_t>& from = At(NodeLibrary, fromNode).SurfaceList;
    if (toNode == fromNode)
        return 0;
    for (const std::int32_t surface : from)
        CheckIndex(At(SurfaceLibrary, surface).GetGeometryID(), GeometryLibrary.size());

    for (const std::int32_t surface : from)
        At(GeometryLibrary, At(SurfaceLibrary, surface).GetGeometryID()).Transform(matrix);
    MoveEntries(to, from);
    return 0;
}

int SceneContainer::MoveCameras(int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    MoveAttached(*this, CameraLibrary, &Node::CameraList, toNode, fromNode, matrix);
    return 0;
}

int SceneContainer::MoveLights(int toNode, int fromNode, const D3DXMATRIX& matrix)
{
    MoveAttached(*this, LightLibrary, &Node::LightList, toNode, fromNode, matrix);
    return 0;
}

}  // namespace Importing
