#include <sceneprep/ShownSurfaces.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/Hierarchy.h>

#include <cmath>

namespace Sceneprep
{

using Importing::At;

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

WorldPoint CarryToWorld(const D3DXVECTOR3& p, const D3DXMATRIX& m)
{
    WorldPoint result{};
    for (unsigned c = 0; c < 3; ++c)
        result[c] = static_cast<double>(p.x) * m(0, c) + static_cast<double>(p.y) * m(1, c) +
                    static_cast<double>(p.z) * m(2, c) + m(3, c);
    return result;
}

bool IsFinite(const WorldPoint& p) { return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]); }

}  // namespace Sceneprep
