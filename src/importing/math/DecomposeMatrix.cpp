#include <importing/math/DecomposeMatrix.h>

#include <cmath>

namespace Importing
{
namespace
{

float RowLength(const float* row) { return std::sqrt(row[0] * row[0] + row[1] * row[1] + row[2] * row[2]); }

float Determinant3x3(const D3DXMATRIX& a)
{
    return a._11 * (a._22 * a._33 - a._23 * a._32) - a._12 * (a._21 * a._33 - a._23 * a._31) +
           a._13 * (a._21 * a._32 - a._22 * a._31);
}

}  // namespace

std::uint32_t DecomposeMatrix(D3DXVECTOR3& scale, D3DXQUATERNION& rotation, D3DXVECTOR3& translation,
                              const D3DXMATRIX& matrix)
{
    scale = D3DXVECTOR3(RowLength(matrix.m[0]), RowLength(matrix.m[1]), RowLength(matrix.m[2]));
    if (scale.x == 0.0F || scale.y == 0.0F || scale.z == 0.0F)
        return kInvalidCall;

    if (Determinant3x3(matrix) < 0.0F)
        scale.x = -scale.x;
    translation = D3DXVECTOR3(matrix._41, matrix._42, matrix._43);

    D3DXMATRIX normalized = matrix;
    for (int column = 0; column < 3; ++column)
    {
        normalized.m[0][column] /= scale.x;
        normalized.m[1][column] /= scale.y;
        normalized.m[2][column] /= scale.z;
    }
    D3DXQuaternionRotationMatrix(&rotation, &normalized);
    return 0;
}

}  // namespace Importing
