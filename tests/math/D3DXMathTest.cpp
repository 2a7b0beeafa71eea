#include <importing/math/D3DXMath.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

// The expected numbers were measured with the d3dx9_43.dll of Wine and are compared bit by bit.

namespace
{

using Support::RandomFloats;
using Support::SameBitsOrNaN;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
const D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
const D3DXMATRIX kCounted(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);

/// Returns a matrix with this 3x3 part.
D3DXMATRIX Rows(D3DXVECTOR3 x, D3DXVECTOR3 y, D3DXVECTOR3 z, D3DXVECTOR3 t = D3DXVECTOR3(0, 0, 0))
{
    return {x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0, t.x, t.y, t.z, 1};
}

D3DXMATRIX Diagonal(float x, float y, float z, float w = 1) { return {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, w}; }

template <typename Row>
std::string NameOf(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

TEST(D3DXMath, TypesHaveThePlatformsLayout)
{
    EXPECT_EQ(sizeof(D3DXVECTOR2), 8U);
    EXPECT_EQ(sizeof(D3DXVECTOR3), 12U);
    EXPECT_EQ(sizeof(D3DXQUATERNION), 16U);
    EXPECT_EQ(sizeof(D3DXCOLOR), 16U);
    EXPECT_EQ(sizeof(D3DXMATRIX), 64U);
    EXPECT_TRUE(std::is_standard_layout_v<D3DXVECTOR2> && std::is_standard_layout_v<D3DXVECTOR3> &&
                std::is_standard_layout_v<D3DXQUATERNION> && std::is_standard_layout_v<D3DXCOLOR> &&
                std::is_standard_layout_v<D3DXMATRIX>);
    EXPECT_TRUE(std::is_trivially_copyable_v<D3DXMATRIX>);
}

TEST(D3DXMath, MatrixIsRowMajor)
{
    const D3DXMATRIX matrix = kCounted;
    EXPECT_EQ(matrix._12, 2.0F);
    EXPECT_EQ(matrix._41, 13.0F);
    EXPECT_EQ(matrix.m[0][1], 2.0F);
    EXPECT_EQ(matrix(3, 0), 13.0F);
    EXPECT_EQ(Support::Floats(matrix)[4], 5.0F);
    const auto floats = Support::Floats(matrix);
    EXPECT_TRUE(SameBitsOrNaN(D3DXMATRIX(floats.data()), kCounted));
}

TEST(D3DXMath, OutputIsReturned)
{
    D3DXMATRIX m;
    D3DXVECTOR2 v2(1, 2);
    D3DXVECTOR3 v3(1, 2, 3);
    D3DXQUATERNION q;
    EXPECT_EQ(D3DXMatrixIdentity(&m), &m);
    EXPECT_EQ(D3DXMatrixMultiply(&m, &kCounted, &kCounted), &m);
    EXPECT_EQ(D3DXMatrixScaling(&m, 1, 2, 3), &m);
    EXPECT_EQ(D3DXMatrixTranslation(&m, 1, 2, 3), &m);
    EXPECT_EQ(D3DXMatrixTransformation(&m, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), &m);
    EXPECT_EQ(D3DXQuaternionRotationMatrix(&q, &m), &q);
    EXPECT_EQ(D3DXVec2TransformCoord(&v2, &v2, &m), &v2);
    EXPECT_EQ(D3DXVec3TransformCoord(&v3, &v3, &m), &v3);
    EXPECT_EQ(D3DXVec3TransformNormal(&v3, &v3, &m), &v3);
    EXPECT_EQ(D3DXVec3Normalize(&v3, &v3), &v3);
}

// --- Normalize -------------------------------------------------------------------------------------------------

TEST(D3DXVec3Normalize, MeasuredResults)
{
    const struct
    {
        D3DXVECTOR3 input, expected;
    } rows[] = {
        {{0, 0, 0}, {0, 0, 0}},
        {{-0.0F, 0, -0.0F}, {0, 0, 0}},
        {{1, 2, 3}, {0x1.11aceep-2F, 0x1.11aceep-1F, 0x1.9a8364p-1F}},
        {{3, 0, 4}, {0x1.333334p-1F, 0, 0x1.99999ap-1F}},
        {{1, 1, 1}, {0x1.279a74p-1F, 0x1.279a74p-1F, 0x1.279a74p-1F}},
        {{1, 0, 0}, {1, 0, 0}},
        {{0.70710677F, 0.70710677F, 0}, {0x1.6a09e8p-1F, 0x1.6a09e8p-1F, 0}},
        {{1.4013e-45F, 0, 0}, {0, 0, 0}},
        {{1e-40F, 1e-40F, 0}, {0, 0, 0}},
        {{1e-23F, 0, 0}, {0, 0, 0}},
        {{1e-22F, 1e-22F, 0}, {0x1.6d8b7ap-1F, 0x1.6d8b7ap-1F, 0}},
        {{1e-20F, 0, 0}, {0x1.00002cp+0F, 0, 0}},
        {{1e-19F, 2e-19F, 0}, {0x1.c9f25cp-2F, 0x1.c9f25cp-1F, 0}},
        {{1e-10F, 0, 0}, {1, 0, 0}},
        {{1e+19F, 0, 0}, {1, 0, 0}},
        {{1.8e+19F, 0, 0}, {1, 0, 0}},
        {{2e+19F, 0, 0}, {0, 0, 0}},
        {{3e+38F, 3e+38F, 0}, {0, 0, 0}},
        {{kInf, 0, 0}, {kNaN, 0, 0}},
        {{kInf, 1, 0}, {kNaN, 0, 0}},
        {{kNaN, 0, 0}, {kNaN, kNaN, kNaN}},
        {{-2, 0, 0}, {-1, 0, 0}},
        {{0, -0.0F, 5}, {0, -0.0F, 1}},
    };
    for (const auto& [input, expected] : rows)
    {
        D3DXVECTOR3 out;
        EXPECT_TRUE(SameBitsOrNaN(*D3DXVec3Normalize(&out, &input), expected)) << Support::HexText(input);
        D3DXVECTOR3 inPlace = input;
        EXPECT_TRUE(SameBitsOrNaN(*D3DXVec3Normalize(&inPlace, &inPlace), expected)) << Support::HexText(input);
    }
}

// --- TransformCoord, TransformNormal ---------------------------------------------------------------------------

struct CoordRow
{
    const char* name;
    D3DXMATRIX matrix;
    D3DXVECTOR3 input, expected;
};

/// Returns the identity with other fourth elements in the first and last row.
D3DXMATRIX WithW(float m14, float m44) { return {1, 0, 0, m14, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, m44}; }

class D3DXVec3TransformCoordRows : public testing::TestWithParam<CoordRow>
{};

TEST_P(D3DXVec3TransformCoordRows, MeasuredResult)
{
    const CoordRow& row = GetParam();
    D3DXVECTOR3 out;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXVec3TransformCoord(&out, &row.input, &row.matrix), row.expected));
    D3DXVECTOR3 inPlace = row.input;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXVec3TransformCoord(&inPlace, &inPlace, &row.matrix), row.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, D3DXVec3TransformCoordRows,
    testing::Values(
        CoordRow{"Identity", kIdentity, {1, 2, 3}, {1, 2, 3}},
        CoordRow{"MinusZeroBecomesZero", kIdentity, {-0.0F, 0, -0.0F}, {0, 0, 0}},
        CoordRow{"DividesByTwo", WithW(0, 2), {1, 2, 3}, {0.5F, 1, 1.5F}},
        CoordRow{"DividesThreeTimes", WithW(0, 3), {1, 2, 5}, {0x1.555556p-2F, 0x1.555556p-1F, 0x1.aaaaaap+0F}},
        CoordRow{"NegativeW", WithW(0, -1), {1, 2, 3}, {-1, -2, -3}},
        CoordRow{"WOfZeroIsNotGuarded", WithW(0, 0), {1, -2, 0}, {kInf, -kInf, kNaN}},
        CoordRow{"ZeroByZero", WithW(0, 0), {0, 0, 0}, {kNaN, kNaN, kNaN}},
        CoordRow{"WOfMinusZeroSumsToZero", WithW(0, -0.0F), {1, -2, 0}, {kInf, -kInf, kNaN}},
        CoordRow{"WFromXOfZero", WithW(1, 1), {-1, 2, 3}, {-kInf, kInf, kInf}},
        CoordRow{"WFromX", WithW(1, 1), {1, 2, 3}, {0.5F, 1, 1.5F}},
        CoordRow{"WOfNaN", WithW(0, kNaN), {1, 2, 3}, {kNaN, kNaN, kNaN}},
        CoordRow{"WOfDenormal", WithW(0, 1e-45F), {1, 2, 0}, {kInf, kInf, 0}},
        CoordRow{"WOfInfinity", WithW(0, kInf), {1, 2, 0}, {0, 0, 0}},
        CoordRow{"Permutation", Rows({0, 1, 0}, {0, 0, 1}, {1, 0, 0}), {1, 2, 3}, {3, 1, 2}},
        CoordRow{"Translation", Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {10, 20, 30}), {1, 2, 3}, {11, 22, 33}}),
    NameOf<CoordRow>);

TEST(D3DXVec3TransformNormal, FourthRowAndColumnDoNotMatter)
{
    const D3DXMATRIX matrix(1, 0.5F, 0.5F, 99, 0.5F, 1, 0.5F, 99, 0.5F, 0.5F, 1, 99, 99, 99, 99, 99);
    D3DXVECTOR3 vector(1, 2, 3);
    D3DXVECTOR3 out;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXVec3TransformNormal(&out, &vector, &matrix), D3DXVECTOR3(3.5F, 4, 4.5F)));
    EXPECT_TRUE(SameBitsOrNaN(*D3DXVec3TransformNormal(&vector, &vector, &matrix), D3DXVECTOR3(3.5F, 4, 4.5F)));
}

TEST(D3DXVec2TransformCoord, MeasuredResults)
{
    const auto carried = [](const D3DXMATRIX& matrix) {
        D3DXVECTOR2 vector(1, 2);
        return *D3DXVec2TransformCoord(&vector, &vector, &matrix);
    };
    D3DXMATRIX translation(1, 0, 0, 0, 0, 1, 0, 0, 100, 100, 100, 100, 5, 6, 0, 1);
    EXPECT_TRUE(SameBitsOrNaN(carried(kIdentity), D3DXVECTOR2(1, 2)));
    EXPECT_TRUE(SameBitsOrNaN(carried(translation), D3DXVECTOR2(6, 8))) << "row 3 does not matter";
    translation._44 = 3;
    EXPECT_TRUE(SameBitsOrNaN(carried(translation), D3DXVECTOR2(2, 0x1.555556p+1F)));
    translation._44 = 0;
    EXPECT_TRUE(SameBitsOrNaN(carried(translation), D3DXVECTOR2(kInf, kInf))) << "no guard";
    translation._14 = 1;
    EXPECT_TRUE(SameBitsOrNaN(carried(translation), D3DXVECTOR2(6, 8))) << "w comes from x";
    EXPECT_TRUE(SameBitsOrNaN(carried(Rows({0, 1, 0}, {1, 0, 0}, {0, 0, 1})), D3DXVECTOR2(2, 1)));
}

// --- Products and determinants ---------------------------------------------------------------------------------

/// Returns the product by its formula: for each element the four terms from left to right.
D3DXMATRIX LiteralProduct(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    D3DXMATRIX out;
    for (unsigned i = 0; i < 4; ++i)
    {
        for (unsigned j = 0; j < 4; ++j)
        {
            float sum = a(i, 0) * b(0, j);
            for (unsigned k = 1; k < 4; ++k)
                sum = sum + a(i, k) * b(k, j);
            out(i, j) = sum;
        }
    }
    return out;
}

TEST(D3DXMatrixMultiply, OutputMayBeAnInput)
{
    const D3DXMATRIX expected(90, 100, 110, 120, 202, 228, 254, 280, 314, 356, 398, 440, 426, 484, 542, 600);
    D3DXMATRIX a = kCounted;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXMatrixMultiply(&a, &a, &kCounted), expected));
    D3DXMATRIX b = kCounted;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXMatrixMultiply(&b, &kCounted, &b), expected));
    D3DXMATRIX both = kCounted;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXMatrixMultiply(&both, &both, &both), expected));
}

TEST(D3DXMatrixMultiply, AppliesTheLeftMatrixFirst)
{
    D3DXMATRIX scaling;
    D3DXMATRIX translation;
    D3DXMATRIX product;
    D3DXMatrixScaling(&scaling, 2, 2, 2);
    D3DXMatrixTranslation(&translation, 1, 0, 0);
    D3DXVECTOR3 point(1, 1, 1);
    D3DXVec3TransformCoord(&point, &point, D3DXMatrixMultiply(&product, &scaling, &translation));
    EXPECT_EQ(point, D3DXVECTOR3(3, 2, 2));
}

TEST(D3DXMatrixMultiply, SumsStartFromTheFirstProduct)
{
    D3DXMATRIX negative;
    D3DXMATRIX ones;
    for (unsigned i = 0; i < 16; ++i)
    {
        negative(i / 4, i % 4) = -0.0F;
        ones(i / 4, i % 4) = 1;
    }
    EXPECT_TRUE(SameBitsOrNaN(*D3DXMatrixMultiply(&ones, &negative, &ones), negative));
}

TEST(D3DXMatrixMultiply, RandomMatricesGiveTheBitsOfTheFormulaAndNearlyTheExactProduct)
{
    RandomFloats random(4);
    for (int n = 0; n < 2000; ++n)
    {
        const D3DXMATRIX a = random.Matrix(10);
        const D3DXMATRIX b = random.Matrix(10);
        D3DXMATRIX out;
        D3DXMatrixMultiply(&out, &a, &b);
        ASSERT_TRUE(SameBitsOrNaN(out, LiteralProduct(a, b))) << n;
        for (unsigned i = 0; i < 4; ++i)
        {
            for (unsigned j = 0; j < 4; ++j)
            {
                double exact = 0;
                for (unsigned k = 0; k < 4; ++k)
                    exact += static_cast<double>(a(i, k)) * static_cast<double>(b(k, j));
                ASSERT_NEAR(out(i, j), exact, 2e-4) << n;
            }
        }
    }
}

/// Returns the determinant by elimination with pivots, in double precision.
double EliminatedDeterminant(const D3DXMATRIX& matrix)
{
    double a[4][4];
    for (unsigned i = 0; i < 16; ++i)
        a[i / 4][i % 4] = static_cast<double>(matrix(i / 4, i % 4));
    double determinant = 1;
    for (unsigned column = 0; column < 4; ++column)
    {
        unsigned pivot = column;
        for (unsigned row = column + 1; row < 4; ++row)
            if (std::abs(a[row][column]) > std::abs(a[pivot][column]))
                pivot = row;
        if (pivot != column)
        {
            std::swap(a[pivot], a[column]);
            determinant = -determinant;
        }
        determinant *= a[column][column];
        for (unsigned row = column + 1; row < 4; ++row)
            for (unsigned k = 4; k-- > column;)
                a[row][k] -= a[row][column] / a[column][column] * a[column][k];
    }
    return determinant;
}

/// Returns the determinant by its formula: a(r, c) counted from 1, every sum from left to right.
float LiteralDeterminant(const D3DXMATRIX& matrix)
{
    const auto a = [&matrix](unsigned r, unsigned c) { return matrix(r - 1, c - 1); };
    const auto d = [&a](unsigned r, unsigned s, unsigned j, unsigned k) {
        return a(r, j) * a(s, k) - a(r, k) * a(s, j);
    };
    const float c1 = a(2, 2) * d(3, 4, 3, 4) - a(3, 2) * d(2, 4, 3, 4) + a(4, 2) * d(2, 3, 3, 4);
    const float c2 = -a(2, 1) * d(3, 4, 3, 4) + a(3, 1) * d(2, 4, 3, 4) - a(4, 1) * d(2, 3, 3, 4);
    const float c3 = a(4, 4) * d(2, 3, 1, 2) - a(3, 4) * d(2, 4, 1, 2) + a(2, 4) * d(3, 4, 1, 2);
    const float c4 = -a(4, 3) * d(2, 3, 1, 2) + a(3, 3) * d(2, 4, 1, 2) - a(2, 3) * d(3, 4, 1, 2);
    return a(1, 1) * c1 + a(1, 2) * c2 + a(1, 3) * c3 + a(1, 4) * c4;
}

TEST(D3DXMatrixDeterminant, MeasuredResults)
{
    const D3DXMATRIX tenths(0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F, 0.9F, 1.0F, 1.1F, 1.2F, 1.3F, 1.4F, 1.5F,
                            1.6F);
    const struct
    {
        D3DXMATRIX matrix;
        float expected;
    } rows[] = {{kIdentity, 1},
                {Diagonal(2, 3, 4), 24},
                {Diagonal(-1, 1, 1), -1},
                {kCounted, 0},
                {tenths, -0x1.8p-28F},
                {Diagonal(1e20F, 1e20F, 1e20F), kInf},
                {Diagonal(0, 1, 1), 0},
                {Diagonal(1e20F, 1e20F, 1e-20F), 0x1.5af1d8p+66F},
                {Diagonal(1e-30F, 1e-30F, 1e-30F), 0}};
    for (const auto& [matrix, expected] : rows)
        EXPECT_TRUE(SameBitsOrNaN(D3DXMatrixDeterminant(&matrix), expected)) << Support::HexText(matrix);
}

TEST(D3DXMatrixDeterminant, CoversTheFourthColumn)
{
    const D3DXMATRIX matrix = Diagonal(2, 3, 4, -1);
    EXPECT_EQ(D3DXMatrixDeterminant(&matrix), -24.0F);
}

TEST(D3DXMatrixDeterminant, RandomMatricesGiveTheBitsOfTheFormulaAndNearlyTheExactDeterminant)
{
    RandomFloats random(5);
    for (int n = 0; n < 5000; ++n)
    {
        const D3DXMATRIX matrix = random.Matrix(4);
        const float determinant = D3DXMatrixDeterminant(&matrix);
        ASSERT_TRUE(SameBitsOrNaN(determinant, LiteralDeterminant(matrix))) << n;
        ASSERT_NEAR(determinant, EliminatedDeterminant(matrix), 2e-3) << n;
    }
}

TEST(D3DXMath, IdentityScalingAndTranslationWriteAllElements)
{
    D3DXMATRIX matrix = kCounted;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXMatrixIdentity(&matrix), kIdentity));
    matrix = kCounted;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXMatrixScaling(&matrix, 2, -3, 0), Diagonal(2, -3, 0)));
    matrix = kCounted;
    EXPECT_TRUE(
        SameBitsOrNaN(*D3DXMatrixTranslation(&matrix, 5, 6, 7), Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {5, 6, 7})));
}

}  // namespace
