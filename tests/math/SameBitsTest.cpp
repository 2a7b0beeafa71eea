#include <importing/math/SameBits.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using Importing::SameBits;

D3DXMATRIX Identity()
{
    D3DXMATRIX matrix;
    D3DXMatrixIdentity(&matrix);
    return matrix;
}

TEST(SameBits, EqualMatricesHaveTheSameBits) { EXPECT_TRUE(SameBits(Identity(), Identity())); }

TEST(SameBits, EveryElementMatters)
{
    for (unsigned row = 0; row < 4; ++row)
    {
        for (unsigned column = 0; column < 4; ++column)
        {
            D3DXMATRIX other = Identity();
            other(row, column) += 0.5F;
            EXPECT_FALSE(SameBits(Identity(), other)) << row << ' ' << column;
        }
    }
}

TEST(SameBits, ZerosOfDifferentSignDiffer)
{
    D3DXMATRIX other = Identity();
    other._21 = -0.0F;
    EXPECT_FALSE(SameBits(Identity(), other));
}

TEST(SameBits, NaNEqualsItself)
{
    D3DXMATRIX matrix = Identity();
    matrix._33 = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(SameBits(matrix, matrix));
}

}  // namespace
