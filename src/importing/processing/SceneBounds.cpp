#include <importing/base/CheckedAccess.h>
#include <importing/base/ForReading.h>
#include <importing/math/Box.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/processing/WorldMatrices.h>

namespace Importing
{
namespace
{

/// Returns the bounds of all referenced surfaces. worldMatrixOf(node) is called once for each reference.
template <typename WorldMatrixOf>
Box Bounds(const SceneContainer& scene, WorldMatrixOf worldMatrixOf)
{
    Box bounds = EmptyBox();
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
    {
        // An override of CalculateGlobalTM may change the library, so the list is looked up again each time.
        for (std::size_t entry = 0; entry < At(scene.NodeLibrary, node).SurfaceList.size(); ++entry)
        {
            const std::int32_t surface = scene.NodeLibrary[node].SurfaceList[entry];
            Box local;
            At(scene.GeometryLibrary, At(scene.SurfaceLibrary, surface).GetGeometryID())
                .GetBoundingBox(local.min, local.max);
            Extend(bounds, local, worldMatrixOf(static_cast<int>(node)));
        }
    }
    return bounds;
}

}  // namespace

int SceneContainer::GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const
{
    // CalculateGlobalTM is not declared const, but its default body changes nothing.
    SceneContainer& scene = ForReading(*this);
    Box bounds;
    if (IsPlain(scene))
    {
        WorldMatrices matrices(scene);
        bounds = Bounds(scene, [&matrices](int node) { return matrices.Of(node); });
    }
    else
    {
        bounds = Bounds(scene, [&scene](int node) { return scene.CalculateGlobalTM(node); });
    }
    min = bounds.min;
    max = bounds.max;
    return 0;
}

}  // namespace Importing
