#pragma once

/// @file
/// Conversions between the value types of Assimp and those of the container. Assimp uses column vectors, so matrices
/// are transposed.

#include <assimp/color4.h>
#include <assimp/matrix4x4.h>
#include <assimp/quaternion.h>
#include <assimp/types.h>
#include <assimp/vector3.h>
#include <importing/math/D3DXMath.h>

namespace Sceneprep
{

inline D3DXMATRIX ToMatrix(const aiMatrix4x4& m)
{
    return {m.a1, m.b1, m.c1, m.d1, m.a2, m.b2, m.c2, m.d2, m.a3, m.b3, m.c3, m.d3, m.a4, m.b4, m.c4, m.d4};
}

inline aiMatrix4x4 FromMatrix(const D3DXMATRIX& m)
{
    return {m._11, m._21, m._31, m._41, m._12, m._22, m._32, m._42,
            m._13, m._23, m._33, m._43, m._14, m._24, m._34, m._44};
}

inline D3DXVECTOR3 ToVector(const aiVector3D& v) { return {v.x, v.y, v.z}; }

inline aiVector3D FromVector(const D3DXVECTOR3& v) { return {v.x, v.y, v.z}; }

/// A quaternion means the same rotation for row vectors and for column vectors, so it is copied unchanged.
inline D3DXQUATERNION ToQuaternion(const aiQuaternion& q) { return {q.x, q.y, q.z, q.w}; }

inline aiQuaternion FromQuaternion(const D3DXQUATERNION& q) { return {q.w, q.x, q.y, q.z}; }

inline D3DXCOLOR ToColor(const aiColor3D& c) { return {c.r, c.g, c.b, 1.0F}; }

inline aiColor3D FromColor(const D3DXCOLOR& c) { return {c.r, c.g, c.b}; }

}  // namespace Sceneprep
