#include <importing/math/DecomposeMatrix.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

namespace
{

using Importing::DecomposeMatrix;
using Support::NearFloats;
using Support::SameBitsOrNaN;

struct Parts
{
    D3DXVECTOR3 scale{77, 77, 77};
    D3DXQUATERNION rotation{77, 77, 77, 77};
    D3DXVECTOR3 translation{77, 77, 77};
    std::uint32_t result = 77;

    explicit Parts(const D3DXMATRIX& matrix) { result = DecomposeMatrix(scale, rotation, translation, matrix); }
};

D3DXMATRIX Diagonal(float x, float y, float z) { return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1}; }

D3DXMATRIX Composed(const D3DXVECTOR3& scale, const D3DXQUATERNION& rotation, const D3DXVECTOR3& translation)
{
    D3DXMATRIX matrix;
    D3DXMatrixTransformation(&matrix, nullptr, nullptr, &scale, nullptr, &rotation, &translation);
    return matrix;
}

TEST(DecomposeMatrix, SeparatesScaleAndTranslation)
{
    D3DXMATRIX matrix = Diagonal(2, 3, 4);
    matrix._41 = 5;
    matrix._42 = 6;
    matrix._43 = 7;
    const Parts parts(matrix);
    EXPECT_EQ(parts.result, 0U);
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(2, 3, 4)));
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXQUATERNION(0, 0, 0, 1)));
    EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(5, 6, 7)));
}

struct Mirror
{
    const char* name;
    D3DXVECTOR3 diagonal;
    D3DXQUATERNION rotation;
};

class DecomposeMatrixMirror : public testing::TestWithParam<Mirror>
{};

TEST_P(DecomposeMatrixMirror, NegativeSignIsInX)
{
    const D3DXVECTOR3& d = GetParam().diagonal;
    const Parts parts(Diagonal(d.x, d.y, d.z));
    EXPECT_EQ(parts.result, 0U);
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(-std::abs(d.x), std::abs(d.y), std::abs(d.z))));
    const D3DXMATRIX again = Composed(parts.scale, parts.rotation, parts.translation);
    EXPECT_TRUE(NearFloats(again, Diagonal(d.x, d.y, d.z), 1e-6F));
    EXPECT_EQ(parts.rotation, GetParam().rotation);
}

// Mirroring y or z equals mirroring x and rotating by 180 degrees about the third axis.
INSTANTIATE_TEST_SUITE_P(Axes, DecomposeMatrixMirror,
                         testing::Values(Mirror{"X", {-2, 3, 4}, {0, 0, 0, 1}}, Mirror{"Y", {2, -3, 4}, {0, 0, 1, 0}},
                                         Mirror{"Z", {2, 3, -4}, {0, 1, 0, 0}},
                                         Mirror{"XYZ", {-1, -1, -1}, {1, 0, 0, 0}}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DecomposeMatrix, TwoMirroredAxesAreARotation)
{
    const Parts parts(Diagonal(-2, -3, 4));
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(2, 3, 4)));
    EXPECT_EQ(parts.rotation, D3DXQUATERNION(0, 0, 1, 0));
}

TEST(DecomposeMatrix, FourthColumnDoesNotMatter)
{
    D3DXMATRIX matrix = Diagonal(1, 1, 1);
    matrix._14 = 5;
    matrix._44 = 2;
    const Parts parts(matrix);
    EXPECT_EQ(parts.result, 0U);
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(1, 1, 1)));
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXQUATERNION(0, 0, 0, 1)));
}

TEST(DecomposeMatrix, RowOfLengthZeroWritesOnlyTheScale)
{
    for (int row = 0; row < 3; ++row)
    {
        D3DXVECTOR3 scale(-2, 3, 4);
        (row == 0 ? scale.x : row == 1 ? scale.y : scale.z) = 0;
        D3DXMATRIX matrix = Diagonal(scale.x, scale.y, scale.z);
        matrix._41 = 9;
        const Parts parts(matrix);
        EXPECT_EQ(parts.result, 0x8876086CU) << "row " << row;
        EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(std::abs(scale.x), scale.y, scale.z))) << "row " << row;
        EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXQUATERNION(77, 77, 77, 77))) << "row " << row;
        EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(77, 77, 77))) << "row " << row;
    }
}

TEST(DecomposeMatrix, LengthThatUnderflowsIsZero) { EXPECT_EQ(Parts(Diagonal(1e-30F, 1, 1)).result, 0x8876086CU); }

TEST(DecomposeMatrix, CoplanarRowsCountAsNotMirrored)
{
    const Parts parts(D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1));
    EXPECT_EQ(parts.result, 0U);
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(1, 1, 0x1.6a09e6p+0F)));
}

TEST(DecomposeMatrix, PartsComposeTheMatrixAgain)
{
    Support::RandomFloats random(2);
    for (int i = 0; i < 2000; ++i)
    {
        const auto signedScale = [&random] {
            return random.Between(0.5F, 2) * (random.Integer(2) == 0 ? 1.0F : -1.0F);
        };
        const D3DXVECTOR3 scale(signedScale(), signedScale(), signedScale());
        const D3DXMATRIX matrix = Composed(scale, random.Rotation(), random.Vector(10));
        const Parts parts(matrix);
        ASSERT_EQ(parts.result, 0U);
        ASSERT_EQ(parts.scale.x < 0, scale.x * scale.y * scale.z < 0) << i;
        ASSERT_TRUE(parts.scale.y > 0 && parts.scale.z > 0) << i;
        ASSERT_TRUE(NearFloats(Composed(parts.scale, parts.rotation, parts.translation), matrix, 2e-5F)) << i;
    }
}

}  // namespace
