#include <importing/math/NormalMatrix.h>

namespace Importing
{

D3DXMATRIX NormalMatrix(const D3DXMATRIX& matrix)
{
    D3DXMATRIX result(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    for (int r = 0; r < 3; ++r)
    {
        D3DXVECTOR3 row(matrix.m[r]);
        const bool isZero = row.x == 0.0F && row.y == 0.0F && row.z == 0.0F;
        if (!isZero)
            D3DXVec3Normalize(&row, &row);
        result.m[r][0] = row.x;
        result.m[r][1] = row.y;
        result.m[r][2] = row.z;
    }
    return result;
}

}  // namespace Importing
