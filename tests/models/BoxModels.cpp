#include <models/SceneModels.h>

#include <importing/base/ForReading.h>

#include <limits>
#include <set>

namespace Models
{
namespace
{

using namespace Importing;

constexpr float kLargest = std::numeric_limits<float>::max();

/// Calls visit(node, surface) for every entry of every node's surface list.
template <typename Visit>
void ForEachReference(const SceneContainer& scene, Visit visit)
{
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
        for (std::size_t i = 0; i < scene.NodeLibrary[node].SurfaceList.size(); ++i)
            visit(static_cast<int>(node), scene.NodeLibrary[node].SurfaceList[i]);
}

void ExtendBy(D3DXVECTOR3& min, D3DXVECTOR3& max, const D3DXVECTOR3& point)
{
    if (point.x < min.x)
        min.x = point.x;
    if (point.x > max.x)
        max.x = point.x;
    if (point.y < min.y)
        min.y = point.y;
    if (point.y > max.y)
        max.y = point.y;
    if (point.z < min.z)
        min.z = point.z;
    if (point.z > max.z)
        max.z = point.z;
}

void ExtendByReference(const SceneContainer& scene, int node, int surface, D3DXVECTOR3& min, D3DXVECTOR3& max)
{
    const Geometry& geometry = At(scene.GeometryLibrary, At(scene.SurfaceLibrary, surface).GetGeometryID());
    D3DXVECTOR3 low;
    D3DXVECTOR3 high;
    geometry.GetBoundingBox(low, high);
    const D3DXMATRIX world = GlobalMatrix(scene, node);
    for (const float x : {low.x, high.x})
        for (const float y : {low.y, high.y})
            for (const float z : {low.z, high.z})
            {
                D3DXVECTOR3 corner(x, y, z);
                D3DXVec3TransformCoord(&corner, &corner, &world);
                ExtendBy(min, max, corner);
            }
}

struct Reference
{
    int surface;
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
};

bool Disjoint(const Reference& a, const Reference& b)
{
    return b.max.x < a.min.x || a.max.x < b.min.x || b.max.y < a.min.y || a.max.y < b.min.y || b.max.z < a.min.z ||
           a.max.z < b.min.z;
}

}  // namespace

void CalculateSurfaceCollisionOffset(SceneContainer& scene)
{
    for (Surface& surface : scene.SurfaceLibrary)
        surface.SetCollisionOffset(0);
    std::vector<Reference> references;
    ForEachReference(scene, [&](int node, int surface) {
        Reference reference{surface, {kLargest, kLargest, kLargest}, {-kLargest, -kLargest, -kLargest}};
        ExtendByReference(scene, node, surface, reference.min, reference.max);
        references.push_back(reference);
    });
    for (const Reference& current : references)
        for (const Reference& other : references)
        {
            if (other.surface == current.surface || Disjoint(current, other))
                continue;
            Surface& raised = At(scene.SurfaceLibrary, other.surface);
            if (At(scene.SurfaceLibrary, current.surface).GetCollisionOffset() == raised.GetCollisionOffset())
                raised.SetCollisionOffset(raised.GetCollisionOffset() + 1);
        }
}

void ResolveGeomInstances(SceneContainer& scene)
{
    std::set<int> seen;
    ForEachReference(scene, [&](int, int index) {
        Surface& surface = At(scene.SurfaceLibrary, index);
        const int geometry = surface.GetGeometryID();
        if (geometry < 0 || seen.insert(geometry).second)
            return;
        const Geometry copy = At(scene.GeometryLibrary, geometry);
        scene.GeometryLibrary.push_back(copy);
        surface.SetGeometryID(static_cast<int>(scene.GeometryLibrary.size()) - 1);
    });
}

void GetBoundingBox(const SceneContainer& scene, D3DXVECTOR3& min, D3DXVECTOR3& max)
{
    min = D3DXVECTOR3(kLargest, kLargest, kLargest);
    max = D3DXVECTOR3(-kLargest, -kLargest, -kLargest);
    ForEachReference(scene, [&](int node, int surface) { ExtendByReference(scene, node, surface, min, max); });
}

}  // namespace Models
