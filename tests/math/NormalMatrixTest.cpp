#include <importing/math/NormalMatrix.h>

#include <math/FloatBits.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

using Importing::NormalMatrix;
using Support::SameBitsOrNaN;

const D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

TEST(NormalMatrix, IdentityStaysTheIdentity) { EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(kIdentity), kIdentity)); }

TEST(NormalMatrix, ScaleOfEveryRowIsRemoved)
{
    const D3DXMATRIX scale(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0.5F, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(scale), kIdentity));
}

TEST(NormalMatrix, MirroringIsKept)
{
    const D3DXMATRIX mirror(-2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    const D3DXMATRIX expected(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(mirror), expected));
}

TEST(NormalMatrix, TranslationAndFourthColumnAreDropped)
{
    const D3DXMATRIX matrix(1, 0, 0, 5, 0, 1, 0, 6, 0, 0, 1, 7, 8, 9, 10, 11);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(matrix), kIdentity));
}

TEST(NormalMatrix, RowsAreDividedByTheirLength)
{
    const D3DXMATRIX matrix(1, 2, 3, 0, 3, 0, 4, 0, 1, 1, 1, 0, 0, 0, 0, 1);
    const D3DXMATRIX expected(0x1.11aceep-2F, 0x1.11aceep-1F, 0x1.9a8364p-1F, 0,  //
                              0x1.333334p-1F, 0, 0x1.99999ap-1F, 0,               //
                              0x1.279a74p-1F, 0x1.279a74p-1F, 0x1.279a74p-1F, 0,  //
                              0, 0, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(matrix), expected));
}

TEST(NormalMatrix, RowOfZerosIsKeptWithItsSigns)
{
    const D3DXMATRIX matrix(-0.0F, 0, -0.0F, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(matrix), matrix));
}

TEST(NormalMatrix, RowWhoseLengthUnderflowsBecomesZero)
{
    const D3DXMATRIX matrix(-1e-30F, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    const D3DXMATRIX expected(0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(matrix), expected));
}

TEST(NormalMatrix, NaNSpreadsOverItsRowOnly)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const D3DXMATRIX matrix(nan, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    const D3DXMATRIX expected(nan, nan, nan, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(matrix), expected));
}

TEST(NormalMatrix, IsNotTheInverseTranspose)
{
    // The normal of the plane x + y = 0 when x is scaled: the inverse transpose would give (1, 2, 0) / sqrt(5).
    const D3DXMATRIX matrix = NormalMatrix(D3DXMATRIX(2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    const float component = std::sqrt(0.5F);
    const D3DXVECTOR3 normal(component, component, 0);
    D3DXVECTOR3 carried;
    D3DXVec3TransformNormal(&carried, &normal, &matrix);
    EXPECT_TRUE(SameBitsOrNaN(carried, normal));
}

TEST(NormalMatrix, ShearIsKept)
{
    const D3DXMATRIX matrix(1, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    const D3DXMATRIX expected(1, 0, 0, 0, 0x1.6a09e6p-1F, 0x1.6a09e6p-1F, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(NormalMatrix(matrix), expected));
}

}  // namespace
