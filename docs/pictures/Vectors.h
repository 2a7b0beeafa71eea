#pragma once

#include <importing/math/D3DXMath.h>
#include <importing/math/Products.h>

#include <cmath>

namespace Pictures
{

using Importing::Cross;
using Importing::Dot;

inline constexpr float kPi = 3.14159265F;

inline float Length(const D3DXVECTOR3& v) { return std::sqrt(Dot(v, v)); }

/// Zero stays zero.
inline D3DXVECTOR3 Normalized(const D3DXVECTOR3& v)
{
    D3DXVECTOR3 unit;
    D3DXVec3Normalize(&unit, &v);
    return unit;
}

inline D3DXVECTOR3 MovedBy(const D3DXMATRIX& matrix, const D3DXVECTOR3& point)
{
    D3DXVECTOR3 moved;
    D3DXVec3TransformCoord(&moved, &point, &matrix);
    return moved;
}

inline D3DXVECTOR3 TurnedBy(const D3DXMATRIX& matrix, const D3DXVECTOR3& direction)
{
    D3DXVECTOR3 turned;
    D3DXVec3TransformNormal(&turned, &direction, &matrix);
    return turned;
}

/// @return the matrix that applies the first, then the second.
inline D3DXMATRIX Then(const D3DXMATRIX& first, const D3DXMATRIX& second)
{
    D3DXMATRIX product;
    D3DXMatrixMultiply(&product, &first, &second);
    return product;
}

inline D3DXMATRIX Translation(float x, float y, float z)
{
    D3DXMATRIX matrix;
    D3DXMatrixTranslation(&matrix, x, y, z);
    return matrix;
}

inline D3DXMATRIX Scaling(float x, float y, float z)
{
    D3DXMATRIX matrix;
    D3DXMatrixScaling(&matrix, x, y, z);
    return matrix;
}

/// @return a turn about y, in degrees, that takes +z towards +x.
inline D3DXMATRIX TurnAboutY(float degrees)
{
    const float half = degrees * kPi / 360;
    const D3DXQUATERNION rotation(0, std::sin(half), 0, std::cos(half));
    D3DXMATRIX matrix;
    D3DXMatrixTransformation(&matrix, nullptr, nullptr, nullptr, nullptr, &rotation, nullptr);
    return matrix;
}

}  // namespace Pictures
