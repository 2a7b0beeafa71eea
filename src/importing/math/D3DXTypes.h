#pragma once

/// @file
/// This library's declarations of the platform's math value types: the same names, fields and sizes. PlatformTypes.h
/// takes the platform's own declarations instead.

#include <cstdint>

/// A vector of two floats: x, y.
struct D3DXVECTOR2
{
    float x, y;

    D3DXVECTOR2() = default;
    constexpr D3DXVECTOR2(float x_, float y_) : x(x_), y(y_) {}
    constexpr D3DXVECTOR2(const float* values) : x(values[0]), y(values[1]) {}

    friend constexpr bool operator==(const D3DXVECTOR2&, const D3DXVECTOR2&) = default;
};

/// A vector of three floats: x, y, z.
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

/// A quaternion of four floats: x, y, z and the scalar part w.
struct D3DXQUATERNION
{
    float x, y, z, w;

    D3DXQUATERNION() = default;
    constexpr D3DXQUATERNION(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}
    constexpr D3DXQUATERNION(const float* values) : x(values[0]), y(values[1]), z(values[2]), w(values[3]) {}

    friend constexpr bool operator==(const D3DXQUATERNION&, const D3DXQUATERNION&) = default;
};

/// A colour of four floats: red, green, blue, alpha.
struct D3DXCOLOR
{
    float r, g, b, a;

    D3DXCOLOR() = default;
    constexpr D3DXCOLOR(float r_, float g_, float b_, float a_) : r(r_), g(g_), b(b_), a(a_) {}
    constexpr D3DXCOLOR(const float* values) : r(values[0]), g(values[1]), b(values[2]), a(values[3]) {}

    friend constexpr bool operator==(const D3DXCOLOR&, const D3DXCOLOR&) = default;
};

/// Sixteen floats, row-major. An element is m[row][column] or matrix(row, column), counted from 0, or _RC, counted
/// from 1.
struct D3DXMATRIX
{
    // The unnamed structure is part of the published type. Every supported compiler accepts it as an extension.
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

    /// Returns an element; row and column are counted from 0.
    constexpr float& operator()(unsigned row, unsigned column) { return m[row][column]; }
    constexpr float operator()(unsigned row, unsigned column) const { return m[row][column]; }
};

/// The platform's result code; 0 means success.
#if defined(_WIN32)
using HRESULT = long;
#else
using HRESULT = std::int32_t;
#endif
