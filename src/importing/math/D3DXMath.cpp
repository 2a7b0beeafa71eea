#include <importing/math/D3DXMath.h>

namespace
{

D3DXMATRIX Identity() { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; }

D3DXMATRIX Product(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    D3DXMATRIX product;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            product.m[i][j] =
                a.m[i][0] * b.m[0][j] + a.m[i][1] * b.m[1][j] + a.m[i][2] * b.m[2][j] + a.m[i][3] * b.m[3][j];
    return product;
}

D3DXMATRIX Translation(float x, float y, float z) { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1}; }

D3DXMATRIX Rotation(const D3DXQUATERNION& q)
{
    return {1 - 2 * (q.y * q.y + q.z * q.z),
            2 * (q.x * q.y + q.z * q.w),
            2 * (q.x * q.z - q.y * q.w),
            0,
            2 * (q.x * q.y - q.z * q.w),
            1 - 2 * (q.x * q.x + q.z * q.z),
            2 * (q.y * q.z + q.x * q.w),
            0,
            2 * (q.x * q.z + q.y * q.w),
            2 * (q.y * q.z - q.x * q.w),
            1 - 2 * (q.x * q.x + q.y * q.y),
            0,
            0,
            0,
            0,
            1};
}

D3DXMATRIX Transposed(const D3DXMATRIX& a)
{
    return {a._11, a._21, a._31, a._41, a._12, a._22, a._32, a._42,
            a._13, a._23, a._33, a._43, a._14, a._24, a._34, a._44};
}

}  // namespace

#if !defined(IMPORTING_PLATFORM_MATH)
D3DXMATRIX* D3DXMatrixIdentity(D3DXMATRIX* out)
{
    *out = Identity();
    return out;
}
#endif

D3DXMATRIX* D3DXMatrixMultiply(D3DXMATRIX* out, const D3DXMATRIX* a, const D3DXMATRIX* b)
{
    *out = Product(*a, *b);
    return out;
}

float D3DXMatrixDeterminant(const D3DXMATRIX* matrix)
{
    const D3DXMATRIX& a = *matrix;
    // The 2x2 minors of two rows, in columns 3 and 4 (right) and in columns 1 and 2 (left).
    const float right34 = a._33 * a._44 - a._34 * a._43;
    const float right24 = a._23 * a._44 - a._24 * a._43;
    const float right23 = a._23 * a._34 - a._24 * a._33;
    const float left34 = a._31 * a._42 - a._32 * a._41;
    const float left24 = a._21 * a._42 - a._22 * a._41;
    const float left23 = a._21 * a._32 - a._22 * a._31;

    const float c1 = a._22 * right34 - a._32 * right24 + a._42 * right23;
    const float c2 = -a._21 * right34 + a._31 * right24 - a._41 * right23;
    const float c3 = a._44 * left23 - a._34 * left24 + a._24 * left34;
    const float c4 = -a._43 * left23 + a._33 * left24 - a._23 * left34;
    return a._11 * c1 + a._12 * c2 + a._13 * c3 + a._14 * c4;
}

D3DXMATRIX* D3DXMatrixScaling(D3DXMATRIX* out, float x, float y, float z)
{
    *out = D3DXMATRIX(x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1);
    return out;
}

D3DXMATRIX* D3DXMatrixTranslation(D3DXMATRIX* out, float x, float y, float z)
{
    *out = Translation(x, y, z);
    return out;
}

D3DXMATRIX* D3DXMatrixTransformation(D3DXMATRIX* out, const D3DXVECTOR3* scalingCenter,
                                     const D3DXQUATERNION* scalingRotation, const D3DXVECTOR3* scaling,
                                     const D3DXVECTOR3* rotationCenter, const D3DXQUATERNION* rotation,
                                     const D3DXVECTOR3* translation)
{
    // Products with the identity are not skipped: they turn -0 into +0 and spread a NaN over its row.
    D3DXMATRIX result = Identity();
    const auto apply = [&result](const D3DXMATRIX& factor) { result = Product(result, factor); };

    if (scaling != nullptr)
    {
        if (scalingCenter != nullptr)
            apply(Translation(-scalingCenter->x, -scalingCenter->y, -scalingCenter->z));
        if (scalingRotation != nullptr)
            apply(Transposed(Rotation(*scalingRotation)));
        apply(D3DXMATRIX(scaling->x, 0, 0, 0, 0, scaling->y, 0, 0, 0, 0, scaling->z, 0, 0, 0, 0, 1));
        if (scalingRotation != nullptr)
            apply(Rotation(*scalingRotation));
        if (scalingCenter != nullptr)
            apply(Translation(scalingCenter->x, scalingCenter->y, scalingCenter->z));
    }
    if (rotation != nullptr)
    {
        if (rotationCenter != nullptr)
            apply(Translation(-rotationCenter->x, -rotationCenter->y, -rotationCenter->z));
        apply(Rotation(*rotation));
        if (rotationCenter != nullptr)
            apply(Translation(rotationCenter->x, rotationCenter->y, rotationCenter->z));
    }
    apply(Identity());
    if (translation != nullptr)
        apply(Translation(translation->x, translation->y, translation->z));

    *out = result;
    return out;
}

HRESULT D3DXMatrixDecompose(D3DXVECTOR3* scale, D3DXQUATERNION* rotation, D3DXVECTOR3* translation,
                            const D3DXMATRIX* matrix)
{
    const D3DXMATRIX a = *matrix;
    const float sx = std::sqrt(a._11 * a._11 + a._12 * a._12 + a._13 * a._13);
    const float sy = std::sqrt(a._21 * a._21 + a._22 * a._22 + a._23 * a._23);
    const float sz = std::sqrt(a._31 * a._31 + a._32 * a._32 + a._33 * a._33);
    *scale = D3DXVECTOR3(sx, sy, sz);
    *translation = D3DXVECTOR3(a._41, a._42, a._43);
    if (sx == 0.0F || sy == 0.0F || sz == 0.0F)
        return static_cast<HRESULT>(Importing::kInvalidCall);

    const D3DXMATRIX normalized(a._11 / sx, a._12 / sx, a._13 / sx, 0, a._21 / sy, a._22 / sy, a._23 / sy, 0,
                                a._31 / sz, a._32 / sz, a._33 / sz, 0, 0, 0, 0, 1);
    D3DXQuaternionRotationMatrix(rotation, &normalized);
    return 0;
}

D3DXQUATERNION* D3DXQuaternionRotationMatrix(D3DXQUATERNION* out, const D3DXMATRIX* matrix)
{
    const D3DXMATRIX& a = *matrix;
    const float t = a._11 + a._22 + a._33 + 1.0F;
    if (t > 1.0F)
    {
        const float s = 2.0F * std::sqrt(t);
        *out = D3DXQUATERNION((a._23 - a._32) / s, (a._31 - a._13) / s, (a._12 - a._21) / s, s / 4.0F);
        return out;
    }

    // Divide by the component that belongs to the largest diagonal element; of equal elements the first is used.
    if (a._22 > a._11 ? a._33 > a._22 : a._33 > a._11)
    {
        const float s = 2.0F * std::sqrt(1.0F + a._33 - a._11 - a._22);
        *out = D3DXQUATERNION((a._31 + a._13) / s, (a._32 + a._23) / s, s / 4.0F, (a._12 - a._21) / s);
    }
    else if (a._22 > a._11)
    {
        const float s = 2.0F * std::sqrt(1.0F + a._22 - a._11 - a._33);
        *out = D3DXQUATERNION((a._21 + a._12) / s, s / 4.0F, (a._23 + a._32) / s, (a._31 - a._13) / s);
    }
    else
    {
        const float s = 2.0F * std::sqrt(1.0F + a._11 - a._22 - a._33);
        *out = D3DXQUATERNION(s / 4.0F, (a._12 + a._21) / s, (a._13 + a._31) / s, (a._23 - a._32) / s);
    }
    return out;
}
