#include <importing/base/CheckedAccess.h>
#include <importing/plugin/SceneContainer.h>

#include <cstddef>
#include <vector>

namespace Importing
{
namespace
{

void CheckListings(const SceneContainer& scene)
{
    for (const Node& node : scene.NodeLibrary)
    {
        for (const std::int32_t surface : node.SurfaceList)
        {
            const int geometry = At(scene.SurfaceLibrary, surface).GetGeometryID();
            if (geometry >= 0)
                CheckIndex(geometry, scene.GeometryLibrary.size());
        }
    }
}

}  // namespace

int SceneContainer::ResolveGeomInstances()
{
    CheckListings(*this);

    std::vector<bool> seen(GeometryLibrary.size());
    for (std::size_t node = 0; node < NodeLibrary.size(); ++node)
    {
        // An override of the addition may change the library, so the list is looked up anew each time.
        for (std::size_t entry = 0; entry < At(NodeLibrary, node).SurfaceList.size(); ++entry)
        {
            const std::int32_t surface = NodeLibrary[node].SurfaceList[entry];
            const int geometry = At(SurfaceLibrary, surface).GetGeometryID();
            if (geometry < 0)
                continue;
            // Copies stand behind the meshes that were there; a surface that is listed again leads to one.
            seen.resize(GeometryLibrary.size());
            CheckIndex(geometry, seen.size());
            if (!seen[static_cast<std::size_t>(geometry)])
            {
                seen[static_cast<std::size_t>(geometry)] = true;
                continue;
            }
            const int copy = AddGeometryToLibrary(At(GeometryLibrary, geometry), true);
            At(SurfaceLibrary, surface).SetGeometryID(copy);
        }
    }
    return 0;
}

}  // namespace Importing
