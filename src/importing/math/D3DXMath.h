#pragma once

/// @file
/// The platform's math value types, and those of its math functions that the library uses.
///
/// The functions are defined by this library on every platform. With IMPORTING_PLATFORM_MATH the platform's header
/// declares the types and functions; inside the library and in inline functions those declarations still refer to the
/// definitions of this library. They are not exported then, and users link the platform's functions.
///
/// Matrices are row-major for row vectors: a point is transformed as row vector times matrix, the translation is the
/// fourth row, and a product A x B applies A first. Everything is single precision. Every function evaluates its terms
/// in the order written at its definition, without fused steps, so that results have the same bits on every platform.
/// Build code that includes this header with -ffp-contract=off.
///
/// Output pointers come first and are returned. An output may be one of the inputs. No function throws.

#include <importing/base/Export.h>

#if defined(IMPORTING_PLATFORM_MATH)
#include <importing/math/PlatformTypes.h>
#else
#include <importing/math/D3DXTypes.h>
#endif

#include <cmath>
#include <cstdint>

#if defined(IMPORTING_PLATFORM_MATH)
#define IMPORTING_MATH_API
#else
#define IMPORTING_MATH_API IMPORTING_API
#endif

static_assert(sizeof(D3DXVECTOR2) == 8 && sizeof(D3DXVECTOR3) == 12 && sizeof(D3DXQUATERNION) == 16 &&
              sizeof(D3DXCOLOR) == 16 && sizeof(D3DXMATRIX) == 64);

namespace Importing
{
/// The result code for a matrix that cannot be decomposed. The platform's headers define it as the macro
/// D3DERR_INVALIDCALL.
inline constexpr std::uint32_t kInvalidCall = 0x8876086CU;
}  // namespace Importing

#if !defined(IMPORTING_PLATFORM_MATH)  // The platform's header defines this function inline.
/// Writes the identity matrix.
IMPORTING_MATH_API D3DXMATRIX* D3DXMatrixIdentity(D3DXMATRIX* out);
#endif

/// Writes the product a x b. Every element is a[i][1]b[1][j] + a[i][2]b[2][j] + a[i][3]b[3][j] + a[i][4]b[4][j].
IMPORTING_MATH_API D3DXMATRIX* D3DXMatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* a, const D3DXMATRIX* b);

/// Returns the determinant of the whole 4x4 matrix, expanded along the first row.
IMPORTING_MATH_API float D3DXMatrixDeterminant(const D3DXMATRIX* matrix);

/// Writes the scaling matrix diag(x, y, z, 1).
IMPORTING_MATH_API D3DXMATRIX* D3DXMatrixScaling(D3DXMATRIX* out, float x, float y, float z);

/// Writes the translation matrix: the identity with (x, y, z, 1) as its fourth row.
IMPORTING_MATH_API D3DXMATRIX* D3DXMatrixTranslation(D3DXMATRIX* out, float x, float y, float z);

/// Writes the matrix that scales, then rotates, then translates. A null pointer omits its factor. The quaternion is not
/// normalised.
///
/// With centres and a scaling rotation the factors are, in this order: -scalingCenter, inverse scalingRotation,
/// scaling, scalingRotation, scalingCenter, -rotationCenter, rotation, rotationCenter, translation. A centre has an
/// effect only together with its scaling or rotation. The library itself always passes null for the centres and the
/// scaling rotation.
IMPORTING_MATH_API D3DXMATRIX* D3DXMatrixTransformation(D3DXMATRIX* out, const D3DXVECTOR3* scalingCenter,
                                                        const D3DXQUATERNION* scalingRotation,
                                                        const D3DXVECTOR3* scaling, const D3DXVECTOR3* rotationCenter,
                                                        const D3DXQUATERNION* rotation, const D3DXVECTOR3* translation);

/// Decomposes a matrix. Writes the lengths of its first three rows as the scale, the rotation of the rows divided by
/// their lengths, and the fourth row as the translation. The scale is never negative, so mirroring is lost. The fourth
/// column is ignored.
///
/// @return 0; or 0x8876086C when a row has length 0, and then the rotation is not written.
IMPORTING_MATH_API HRESULT D3DXMatrixDecompose(D3DXVECTOR3* scale, D3DXQUATERNION* rotation, D3DXVECTOR3* translation,
                                               const D3DXMATRIX* matrix);

/// Writes the quaternion of the upper 3x3 part, which is expected to be a rotation.
IMPORTING_MATH_API D3DXQUATERNION* D3DXQuaternionRotationMatrix(D3DXQUATERNION* out, const D3DXMATRIX* matrix);

/// Transforms a point: writes (x, y, z, 1) times the matrix, divided by the resulting w. There is no guard against
/// w = 0.
inline D3DXVECTOR3* D3DXVec3TransformCoord(D3DXVECTOR3* out, const D3DXVECTOR3* vector, const D3DXMATRIX* matrix)
{
    const D3DXVECTOR3 v = *vector;
    const D3DXMATRIX& a = *matrix;
    const float x = a._11 * v.x + a._21 * v.y + a._31 * v.z + a._41;
    const float y = a._12 * v.x + a._22 * v.y + a._32 * v.z + a._42;
    const float z = a._13 * v.x + a._23 * v.y + a._33 * v.z + a._43;
    const float w = a._14 * v.x + a._24 * v.y + a._34 * v.z + a._44;
    *out = D3DXVECTOR3(x / w, y / w, z / w);
    return out;
}

/// Transforms a direction: writes the vector times the upper 3x3 part of the matrix.
inline D3DXVECTOR3* D3DXVec3TransformNormal(D3DXVECTOR3* out, const D3DXVECTOR3* vector, const D3DXMATRIX* matrix)
{
    const D3DXVECTOR3 v = *vector;
    const D3DXMATRIX& a = *matrix;
    const float x = a._11 * v.x + a._21 * v.y + a._31 * v.z;
    const float y = a._12 * v.x + a._22 * v.y + a._32 * v.z;
    const float z = a._13 * v.x + a._23 * v.y + a._33 * v.z;
    *out = D3DXVECTOR3(x, y, z);
    return out;
}

/// Transforms texture coordinates: writes (x, y, 0, 1) times the matrix, divided by the resulting w. There is no guard
/// against w = 0.
inline D3DXVECTOR2* D3DXVec2TransformCoord(D3DXVECTOR2* out, const D3DXVECTOR2* vector, const D3DXMATRIX* matrix)
{
    const D3DXVECTOR2 v = *vector;
    const D3DXMATRIX& a = *matrix;
    const float x = a._11 * v.x + a._21 * v.y + a._41;
    const float y = a._12 * v.x + a._22 * v.y + a._42;
    const float w = a._14 * v.x + a._24 * v.y + a._44;
    *out = D3DXVECTOR2(x / w, y / w);
    return out;
}

/// Writes the vector divided by its length, or (+0, +0, +0) when the length is 0.
inline D3DXVECTOR3* D3DXVec3Normalize(D3DXVECTOR3* out, const D3DXVECTOR3* vector)
{
    const D3DXVECTOR3 v = *vector;
    const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    *out = length == 0.0F ? D3DXVECTOR3(0.0F, 0.0F, 0.0F) : D3DXVECTOR3(v.x / length, v.y / length, v.z / length);
    return out;
}
