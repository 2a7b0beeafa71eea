#include <importing/base/CheckedAccess.h>
#include <importing/geometry/Geometry.h>
#include <importing/geometry/Triangles.h>

#include <cstddef>

namespace Importing
{
namespace
{

/// Writes the normals of one frame: positions and normals are that frame's entries, one a vertex.
void SmoothFrame(const D3DXVECTOR3* positions, D3DXVECTOR3* normals, std::size_t vertexCount,
                 const std::vector<std::uint32_t>& indices)
{
    std::vector<bool> visited(vertexCount);
    for (std::size_t face = 0; face < TriangleCount(indices); ++face)
    {
        const std::uint32_t* corners = indices.data() + kTriangle * face;
        const D3DXVECTOR3 normal = TriangleNormal(positions[corners[0]], positions[corners[1]], positions[corners[2]]);
        for (std::size_t c = 0; c < kTriangle; ++c)
        {
            D3DXVECTOR3& running = normals[corners[c]];
            if (visited[corners[c]])
            {
                running = normal + running;
                D3DXVec3Normalize(&running, &running);
            }
            else
            {
                running = normal;
                visited[corners[c]] = true;
            }
        }
    }
}

}  // namespace

int Geometry::ComputePointCacheNormals()
{
    if (GetPolySize() != kTriangle)
        return -1;
    if (VertexArray.empty())
        return 0;

    const std::size_t vertexCount = VertexArray.size();
    const auto frames = static_cast<std::int32_t>(PointCachePositions.size() / vertexCount);
    if (frames <= 0)
        return 0;

    const std::size_t needed = static_cast<std::size_t>(frames) * vertexCount;
    if (PointCacheNormals.size() < needed)
        ThrowBadSubscript();
    CheckTriangles(IndexArray, vertexCount);

    for (std::size_t base = 0; base < needed; base += vertexCount)
        SmoothFrame(PointCachePositions.data() + base, PointCacheNormals.data() + base, vertexCount, IndexArray);
    return 0;
}

}  // namespace Importing
