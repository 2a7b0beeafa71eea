#include <importing/math/Box.h>

#include <limits>

namespace Importing
{
Box EmptyBox()
{
    constexpr float kLargest = std::numeric_limits<float>::max();
    return {D3DXVECTOR3(kLargest, kLargest, kLargest), D3DXVECTOR3(-kLargest, -kLargest, -kLargest)};
}

std::array<D3DXVECTOR3, 8> Corners(const Box& box)
{
    const D3DXVECTOR3& a = box.min;
    const D3DXVECTOR3& b = box.max;
    return {D3DXVECTOR3(a.x, a.y, a.z), D3DXVECTOR3(b.x, a.y, a.z), D3DXVECTOR3(a.x, b.y, a.z),
            D3DXVECTOR3(b.x, b.y, a.z), D3DXVECTOR3(a.x, a.y, b.z), D3DXVECTOR3(b.x, a.y, b.z),
            D3DXVECTOR3(a.x, b.y, b.z), D3DXVECTOR3(b.x, b.y, b.z)};
}

void Extend(Box& box, const Box& localBox, const D3DXMATRIX& matrix)
{
    for (D3DXVECTOR3 corner : Corners(localBox))
    {
        D3DXVec3TransformCoord(&corner, &corner, &matrix);
        Extend(box, corner);
    }
}

bool Overlap(const Box& a, const Box& b)
{
    const bool isDisjoint = b.max.x < a.min.x || a.max.x < b.min.x || b.max.y < a.min.y || a.max.y < b.min.y ||
                            b.max.z < a.min.z || a.max.z < b.min.z;
    return !isDisjoint;
}

}  // namespace Importing
