// One pass over the faces for each frame. The first face at a vertex sets its normal, and all later faces are blended
// in, regardless of the angle. Vertices are not split at hard edges, because all frames share one index array.

#include <importing/base/CheckedAccess.h>
#include <importing/geometry/Geometry.h>
#include <importing/geometry/Triangles.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Importing
{
namespace
{

/// Returns one more than the largest index that a triangle uses, or 0 without triangles.
std::size_t EndOfUsedIndices(const std::vector<std::uint32_t>& indices)
{
    const auto used = static_cast<std::ptrdiff_t>(kTriangle * TriangleCount(indices));
    const auto largest = std::max_element(indices.begin(), indices.begin() + used);
    return used == 0 ? 0 : std::size_t{*largest} + 1;
}

/// Writes the normals of one frame. Positions and normals begin at the frame's first entry and hold at least `end`
/// more, where every index is below `end`.
void SmoothFrame(const D3DXVECTOR3* positions, D3DXVECTOR3* normals, std::size_t end,
                 const std::vector<std::uint32_t>& indices)
{
    std::vector<bool> visited(end);
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

    // Entries that exist for the last frame exist for all earlier frames too. An index may be the vertex count or more,
    // where the arrays continue after the frame.
    const std::size_t lastFrame = (static_cast<std::size_t>(frames) - 1) * vertexCount;
    const std::size_t end = EndOfUsedIndices(IndexArray);
    if (end > 0 && lastFrame + end > std::min(PointCachePositions.size(), PointCacheNormals.size()))
        ThrowBadSubscript();

    for (std::size_t frame = 0; end > 0 && frame <= lastFrame; frame += vertexCount)
        SmoothFrame(PointCachePositions.data() + frame, PointCacheNormals.data() + frame, end, IndexArray);
    return 0;
}

}  // namespace Importing
