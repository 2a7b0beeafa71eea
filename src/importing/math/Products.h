#pragma once

#include <importing/math/D3DXMath.h>

namespace Importing
{

/// Returns the cross product a x b.
inline D3DXVECTOR3 Cross(const D3DXVECTOR3& a, const D3DXVECTOR3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Returns the dot product, summed in the order y, x, z. Comparisons of normals depend on this order.
inline float Dot(const D3DXVECTOR3& a, const D3DXVECTOR3& b) { return (a.y * b.y + a.x * b.x) + a.z * b.z; }

/// Returns the matrix product a x b, which applies a first.
inline D3DXMATRIX Product(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    D3DXMATRIX product;
    D3DXMatrixMultiply(&product, &a, &b);
    return product;
}

}  // namespace Importing
