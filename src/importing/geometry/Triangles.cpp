#include <importing/geometry/Triangles.h>

#include <importing/base/CheckedAccess.h>
#include <importing/math/Products.h>

namespace Importing
{

std::size_t TriangleCount(const std::vector<std::uint32_t>& indices) { return indices.size() / kTriangle; }

void CheckTriangles(const std::vector<std::uint32_t>& indices, std::size_t vertexCount)
{
    const std::size_t used = TriangleCount(indices) * kTriangle;
    for (std::size_t i = 0; i < used; ++i)
        CheckIndex(indices[i], vertexCount);
}

D3DXVECTOR3 TriangleCross(const D3DXVECTOR3& p0, const D3DXVECTOR3& p1, const D3DXVECTOR3& p2)
{
    return Cross(p1 - p0, p2 - p0);
}

D3DXVECTOR3 TriangleNormal(const D3DXVECTOR3& p0, const D3DXVECTOR3& p1, const D3DXVECTOR3& p2)
{
    D3DXVECTOR3 normal = TriangleCross(p0, p1, p2);
    D3DXVec3Normalize(&normal, &normal);
    return normal;
}

}  // namespace Importing
