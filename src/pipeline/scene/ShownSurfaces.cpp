#include <pipeline/scene/ShownSurfaces.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/Hierarchy.h>

namespace Pipeline
{

using Importing::At;

bool HasTriangles(const Importing::Geometry& geometry)
{
    return geometry.GetPolySize() == 3 && geometry.IndexArray.size() >= 3;
}

void ForEachShownSurface(Importing::SceneContainer& scene, const std::function<void(const ShownSurface&)>& visit)
{
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<D3DXMATRIX> matrices = WorldMatricesOf(scene, walk);
    for (const int node : walk.order)
    {
        for (const std::int32_t index : At(scene.NodeLibrary, node).SurfaceList)
        {
            Importing::Surface& surface = At(scene.SurfaceLibrary, index);
            if (surface.GetGeometryID() < 0)
                continue;
            Importing::Geometry& geometry = At(scene.GeometryLibrary, surface.GetGeometryID());
            if (geometry.GetPolySize() != 3)
                continue;
            Importing::CheckIndices(geometry.IndexArray, geometry.VertexArray.size());
            visit({node, surface, geometry, At(matrices, node)});
        }
    }
}

}  // namespace Pipeline
