#pragma once

#include <importing/math/D3DXMath.h>

namespace Importing
{

/// The cross product a x b.
inline D3DXVECTOR3 Cross(const D3DXVECTOR3& a, const D3DXVECTOR3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The dot product, summed in the order y, x, z that comparisons of normals depend on.
inline float Dot(const D3DXVECTOR3& a, const D3DXVECTOR3& b) { return (a.y * b.y + a.x * b.x) + a.z * b.z; }

/// The matrix product a x b: applies a first.
inline D3DXMATRIX Product(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    D3DXMATRIX product;
    D3DXMatrixMultiply(&product, &a, &b);
    return product;
}

}  // namespace Importing
