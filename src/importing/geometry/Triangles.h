#pragma once

#include <importing/base/CheckedAccess.h>
#include <importing/math/D3DXMath.h>
#include <importing/math/Products.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Importing
{

/// The number of indices in a triangle: the only poly size that operations on faces accept.
inline constexpr std::uint64_t kTriangle = 3;

/// Returns the number of whole triangles in an index array. One or two trailing indices belong to no triangle.
inline std::size_t TriangleCount(const std::vector<std::uint32_t>& indices) { return indices.size() / kTriangle; }

/// Checks the indices of all whole triangles. Cost: linear in the indices.
/// @throws std::out_of_range when an index of a whole triangle is not below vertexCount.
inline void CheckTriangles(const std::vector<std::uint32_t>& indices, std::size_t vertexCount)
{
    const std::size_t used = TriangleCount(indices) * kTriangle;
    for (std::size_t i = 0; i < used; ++i)
        CheckIndex(indices[i], vertexCount);
}

/// Returns the cross product (p1 - p0) x (p2 - p0). It points along the normal of the triangle, and its length is twice
/// the area.
inline D3DXVECTOR3 TriangleCross(const D3DXVECTOR3& p0, const D3DXVECTOR3& p1, const D3DXVECTOR3& p2)
{
    return Cross(p1 - p0, p2 - p0);
}

/// Returns the unit normal of a triangle, or (0, 0, 0) for a triangle without area.
inline D3DXVECTOR3 TriangleNormal(const D3DXVECTOR3& p0, const D3DXVECTOR3& p1, const D3DXVECTOR3& p2)
{
    D3DXVECTOR3 normal = TriangleCross(p0, p1, p2);
    D3DXVec3Normalize(&normal, &normal);
    return normal;
}

}  // namespace Importing
