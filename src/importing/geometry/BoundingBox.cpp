#include <importing/base/ForReading.h>
#include <importing/geometry/Geometry.h>

#include <limits>

namespace Importing
{
namespace
{

void Extend(float& min, float& max, float value)
{
    if (min > value)
        min = value;
    if (value > max)
        max = value;
}

}  // namespace

int Geometry::GetBoundingBox(D3DXVECTOR3& min, D3DXVECTOR3& max) const
{
    constexpr float kLargest = std::numeric_limits<float>::max();
    constexpr float kSmallestPositive = std::numeric_limits<float>::min();

    min = D3DXVECTOR3(kLargest, kLargest, kLargest);
    max = D3DXVECTOR3(kSmallestPositive, kSmallestPositive, kSmallestPositive);
    for (const Vertex& vertex : VertexArray)
    {
        const D3DXVECTOR3 position = ForReading(vertex).GetPosition();
        Extend(min.x, max.x, position.x);
        Extend(min.y, max.y, position.y);
        Extend(min.z, max.z, position.z);
    }
    return 0;
}

}  // namespace Importing
