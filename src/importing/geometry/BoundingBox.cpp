#include <importing/base/ForReading.h>
#include <importing/geometry/Geometry.h>
#include <importing/math/Box.h>

#include <limits>

namespace Importing
{

int Geometry::GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const
{
    constexpr float kLargest = std::numeric_limits<float>::max();
    constexpr float kSmallestPositive = std::numeric_limits<float>::min();

    Box bounds{D3DXVECTOR3(kLargest, kLargest, kLargest),
               D3DXVECTOR3(kSmallestPositive, kSmallestPositive, kSmallestPositive)};
    for (const Vertex& vertex : VertexArray)
        Extend(bounds, ForReading(vertex).Vertex::GetPosition());
    min = bounds.min;
    max = bounds.max;
    return 0;
}

}  // namespace Importing
