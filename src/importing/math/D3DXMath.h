#pragma once

/// @file
/// The platform's math value types and the functions of it that the system uses.
///
/// Matrices are row-major and meant for row vectors: a point is transformed as row vector times matrix, the
/// translation is the fourth row, and a product A x B applies A first. Everything is single precision. Every function
/// evaluates its terms in the one order that stands at its definition, without fused steps, so that results are the
/// same bits on every platform; build with -ffp-contract=off.
///
/// Output pointers come first and are returned. An output may be one of the inputs.

#include <importing/base/Export.h>

#include <cmath>
#include <cstdint>

/// Two floats: x, y.
struct D3DXVECTOR2
{
    float x, y;

    D3DXVECTOR2() = default;
    constexpr D3DXVECTOR2(float x_, float y_) : x(x_), y(y_) {}
    constexpr D3DXVECTOR2(const float* values) : x(values[0]), y(values[1]) {}

    friend constexpr bool operator==(const D3DXVECTOR2&, const D3DXVECTOR2&) = default;
};

/// Three floats: x, y, z.
struct D3DXVECTOR3
{
    float x, y, z;

    D3DXVECTOR3() = default;
    constexpr D3DXVECTOR3(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}
    constexpr D3DXVECTOR3(const float* values) : x(values[0]), y(values[1]), z(values[2]) {}

    friend constexpr D3DXVECTOR3 operator+(const D3DXVECTOR3& a, const D3DXVECTOR3& b)
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend constexpr D3DXVECTOR3 operator-(const D3DXVECTOR3& a, const D3DXVECTOR3& b)
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr D3DXVECTOR3 operator-(const D3DXVECTOR3& a) { return {-a.x, -a.y, -a.z}; }
    friend constexpr D3DXVECTOR3 operator*(const D3DXVECTOR3& a, float s) { return {a.x * s, a.y * s, a.z * s}; }
    friend constexpr bool operator==(const D3DXVECTOR3&, const D3DXVECTOR3&) = default;
};

/// Four floats: x, y, z and the scalar part w.
struct D3DXQUATERNION
{
    float x, y, z, w;

    D3DXQUATERNION() = default;
    constexpr D3DXQUATERNION(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}
    constexpr D3DXQUATERNION(const float* values) : x(values[0]), y(values[1]), z(values[2]), w(values[3]) {}

    friend constexpr bool operator==(const D3DXQUATERNION&, const D3DXQUATERNION&) = default;
};

/// Four floats: red, green, blue, alpha.
struct D3DXCOLOR
{
    float r, g, b, a;

    D3DXCOLOR() = default;
    constexpr D3DXCOLOR(float r_, float g_, float b_, float a_) : r(r_), g(g_), b(b_), a(a_) {}
    constexpr D3DXCOLOR(const float* values) : r(values[0]), g(values[1]), b(values[2]), a(values[3]) {}

    friend constexpr bool operator==(const D3DXCOLOR&, const D3DXCOLOR&) = default;
};

/// Sixteen floats, row-major. Reached as m[row][column], as _RC (both counted from 1) or as matrix(row, column).
struct D3DXMATRIX
{
    // The unnamed structure is part of the published type; every supported compiler has it as an extension.
#if defined(_MSC_VER)
#pragma warning(suppress : 4201)
    union
#else
    __extension__ union
#endif
    {
        struct
        {
            float _11, _12, _13, _14;
            float _21, _22, _23, _24;
            float _31, _32, _33, _34;
            float _41, _42, _43, _44;
        };
        float m[4][4];
    };

    D3DXMATRIX() = default;
    constexpr D3DXMATRIX(float m11, float m12, float m13, float m14, float m21, float m22, float m23, float m24,
                         float m31, float m32, float m33, float m34, float m41, float m42, float m43, float m44)
        : m{{m11, m12, m13, m14}, {m21, m22, m23, m24}, {m31, m32, m33, m34}, {m41, m42, m43, m44}}
    {}
    /// Copies 16 floats, row by row.
    constexpr D3DXMATRIX(const float* v)
        : D3DXMATRIX(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11], v[12], v[13], v[14],
                     v[15])
    {}

    /// Row and column are counted from 0.
    constexpr float& operator()(unsigned row, unsigned column) { return m[row][column]; }
    constexpr float operator()(unsigned row, unsigned column) const { return m[row][column]; }
};

static_assert(sizeof(D3DXVECTOR2) == 8 && sizeof(D3DXVECTOR3) == 12 && sizeof(D3DXQUATERNION) == 16 &&
              sizeof(D3DXCOLOR) == 16 && sizeof(D3DXMATRIX) == 64);

/// The platform's result code: 0 is success.
#if defined(_WIN32)
using HRESULT = long;
#else
using HRESULT = std::int32_t;
#endif

/// The result code 0x8876086C of a matrix that cannot be decomposed.
inline constexpr std::uint32_t D3DERR_INVALIDCALL = 0x8876086CU;

/// Writes the identity.
IMPORTING_API D3DXMATRIX* D3DXMatrixIdentity(D3DXMATRIX* out);

/// out := a x b; every element is a[i][1]b[1][j] + a[i][2]b[2][j] + a[i][3]b[3][j] + a[i][4]b[4][j].
IMPORTING_API D3DXMATRIX* D3DXMatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* a, const D3DXMATRIX* b);

/// @return the determinant of the whole 4x4 matrix, expanded along the first row.
IMPORTING_API float D3DXMatrixDeterminant(const D3DXMATRIX* matrix);

/// Writes diag(x, y, z, 1); all 16 elements are written.
IMPORTING_API D3DXMATRIX* D3DXMatrixScaling(D3DXMATRIX* out, float x, float y, float z);

/// Writes the identity with (x, y, z) in the fourth row.
IMPORTING_API D3DXMATRIX* D3DXMatrixTranslation(D3DXMATRIX* out, float x, float y, float z);

/// Scale, then rotation, then translation. A null pointer leaves its factor out; the quaternion is not normalised.
///
/// With centres and a scaling rotation the factors are, in this order: -scalingCenter, inverse scalingRotation,
/// scaling, scalingRotation, scalingCenter, -rotationCenter, rotation, rotationCenter, translation; centres count
/// only beside the scaling or the rotation that they belong to. The system itself always passes null for them.
IMPORTING_API D3DXMATRIX* D3DXMatrixTransformation(D3DXMATRIX* out, const D3DXVECTOR3* scalingCenter,
                                                   const D3DXQUATERNION* scalingRotation, const D3DXVECTOR3* scaling,
                                                   const D3DXVECTOR3* rotationCenter, const D3DXQUATERNION* rotation,
                                                   const D3DXVECTOR3* translation);

/// Takes a matrix apart: the lengths of its first three rows (never negative: mirroring is not noticed), the rotation
/// of the rows divided by them, and the fourth row. The fourth column is ignored.
///
/// @return 0; or, when a row has no length, the code D3DERR_INVALIDCALL, and the rotation is left as it was.
IMPORTING_API HRESULT D3DXMatrixDecompose(D3DXVECTOR3* scale, D3DXQUATERNION* rotation, D3DXVECTOR3* translation,
                                          const D3DXMATRIX* matrix);

/// The quaternion of the upper 3x3 part, which is expected to be a rotation.
IMPORTING_API D3DXQUATERNION* D3DXQuaternionRotationMatrix(D3DXQUATERNION* out, const D3DXMATRIX* matrix);

/// out := (x, y, z, 1) times the matrix, divided by the resulting w. There is no guard against w = 0.
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

/// out := vector times the upper 3x3 part of the matrix.
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

/// out := (x, y, 0, 1) times the matrix, divided by the resulting w. There is no guard against w = 0.
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

/// out := vector divided by its length; (+0, +0, +0) when the length is 0.
inline D3DXVECTOR3* D3DXVec3Normalize(D3DXVECTOR3* out, const D3DXVECTOR3* vector)
{
    const D3DXVECTOR3 v = *vector;
    const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    *out = length == 0.0F ? D3DXVECTOR3(0.0F, 0.0F, 0.0F) : D3DXVECTOR3(v.x / length, v.y / length, v.z / length);
    return out;
}
