#include <importing/math/D3DXMath.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

// Decomposing and composing matrices. The expected numbers were measured with the d3dx9_43.dll of Wine and are compared
// bit by bit.

namespace
{

using Support::RandomFloats;
using Support::SameBitsOrNaN;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kHalfRoot = 0x1.6a09e6p-1F;  // sqrt(1/2)
const D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

/// Returns a matrix of four rows, the fourth of which is a translation.
D3DXMATRIX Rows(D3DXVECTOR3 x, D3DXVECTOR3 y, D3DXVECTOR3 z, D3DXVECTOR3 t = D3DXVECTOR3(0, 0, 0))
{
    return {x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0, t.x, t.y, t.z, 1};
}

D3DXMATRIX Diagonal(float x, float y, float z) { return Rows({x, 0, 0}, {0, y, 0}, {0, 0, z}); }

template <typename Row>
std::string NameOf(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

// --- Decompose -------------------------------------------------------------------------------------------------

struct DecomposeRow
{
    const char* name;
    D3DXMATRIX matrix;
    D3DXVECTOR3 scale;
    D3DXQUATERNION rotation;
    D3DXVECTOR3 translation = D3DXVECTOR3(0, 0, 0);
    bool isDecomposed = true;
};

const D3DXQUATERNION kUntouched(77, 77, 77, 77);
const D3DXQUATERNION kNoTurn(0, 0, 0, 1);
const D3DXQUATERNION kLostMirror(0, 0, 0, kHalfRoot);

class D3DXMatrixDecomposeRows : public testing::TestWithParam<DecomposeRow>
{};

TEST_P(D3DXMatrixDecomposeRows, MeasuredResult)
{
    const DecomposeRow& row = GetParam();
    D3DXVECTOR3 scale(77, 77, 77);
    D3DXQUATERNION rotation = kUntouched;
    D3DXVECTOR3 translation(77, 77, 77);
    const HRESULT result = D3DXMatrixDecompose(&scale, &rotation, &translation, &row.matrix);
    EXPECT_EQ(static_cast<std::uint32_t>(result), row.isDecomposed ? 0U : 0x8876086CU);
    EXPECT_TRUE(SameBitsOrNaN(scale, row.scale));
    EXPECT_TRUE(SameBitsOrNaN(rotation, row.rotation));
    EXPECT_TRUE(SameBitsOrNaN(translation, row.translation));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, D3DXMatrixDecomposeRows,
    testing::Values(
        DecomposeRow{"Translation", Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 2, 3}), {1, 1, 1}, kNoTurn, {1, 2, 3}},
        DecomposeRow{"UniformScale", Diagonal(2, 2, 2), {2, 2, 2}, kNoTurn},
        DecomposeRow{"Scale", Diagonal(2, 3, 4), {2, 3, 4}, kNoTurn},
        DecomposeRow{"ATenth", Diagonal(0.1F, 0.1F, 0.1F), {0x1.99999ap-4F, 0x1.99999ap-4F, 0x1.99999ap-4F}, kNoTurn},
        DecomposeRow{"NoX", Rows({0, 0, 0}, {0, 3, 0}, {0, 0, 4}, {9, 0, 0}), {0, 3, 4}, kUntouched, {9, 0, 0}, false},
        DecomposeRow{"NoY", Rows({2, 0, 0}, {0, 0, 0}, {0, 0, 4}, {9, 0, 0}), {2, 0, 4}, kUntouched, {9, 0, 0}, false},
        DecomposeRow{"NoZ", Rows({2, 0, 0}, {0, 3, 0}, {0, 0, 0}, {9, 0, 0}), {2, 3, 0}, kUntouched, {9, 0, 0}, false},
        DecomposeRow{"MinusZeroX", Diagonal(-0.0F, 3, 4), {0, 3, 4}, kUntouched, {0, 0, 0}, false},
        DecomposeRow{"AllZero", Diagonal(0, 0, 0), {0, 0, 0}, kUntouched, {0, 0, 0}, false},
        DecomposeRow{"MirrorXIsLost", Diagonal(-2, 3, 4), {2, 3, 4}, kLostMirror},
        DecomposeRow{"MirrorYIsLost", Diagonal(2, -3, 4), {2, 3, 4}, kLostMirror},
        DecomposeRow{"MirrorZIsLost", Diagonal(2, 3, -4), {2, 3, 4}, kLostMirror},
        DecomposeRow{"HalfTurn", Diagonal(-2, -3, 4), {2, 3, 4}, {0, 0, 1, 0}},
        DecomposeRow{"MirrorXYZIsLost", Diagonal(-1, -1, -1), {1, 1, 1}, {kHalfRoot, 0, 0, 0}},
        DecomposeRow{
            "TurnedAndScaled", Rows({0, 2, 0}, {-3, 0, 0}, {0, 0, 4}), {2, 3, 4}, {0, 0, kHalfRoot, kHalfRoot}},
        DecomposeRow{"QuarterTurnX", Rows({1, 0, 0}, {0, 0, 1}, {0, -1, 0}), {1, 1, 1}, {kHalfRoot, 0, 0, kHalfRoot}},
        DecomposeRow{"Shear",
                     Rows({1, 0, 0}, {1, 1, 0}, {0, 0, 1}),
                     {1, 0x1.6a09e6p+0F, 1},
                     {0, 0, -0x1.7811a2p-3F, 0x1.ece606p-1F}},
        DecomposeRow{"ShearAndScale",
                     Rows({2, 0, 0}, {1, 3, 0}, {0, 0, 4}),
                     {2, 0x1.94c584p+1F, 4},
                     {0, 0, -0x1.45ea22p-4F, 0x1.fcb484p-1F}},
        DecomposeRow{"Tiny",
                     Diagonal(1e-20F, 1e-20F, 1e-20F),
                     {0x1.79c9cep-67F, 0x1.79c9cep-67F, 0x1.79c9cep-67F},
                     {0, 0, 0, 0x1.00001p+0F}},
        DecomposeRow{"LengthUnderflows", Diagonal(1e-30F, 1e-30F, 1e-30F), {0, 0, 0}, kUntouched, {0, 0, 0}, false},
        DecomposeRow{"LengthOverflows", Diagonal(1e20F, 1e20F, 1e20F), {kInf, kInf, kInf}, {0.5F, 0, 0, 0}},
        DecomposeRow{"NaN", Rows({kNaN, 0, 0}, {0, 1, 0}, {0, 0, 1}), {kNaN, 1, 1}, {kNaN, kNaN, kNaN, kNaN}},
        DecomposeRow{"Coplanar",
                     Rows({1, 0, 0}, {0, 1, 0}, {1, 1, 0}),
                     {1, 1, 0x1.6a09e6p+0F},
                     {-0x1.a20bd8p-3F, 0x1.a20bd8p-3F, 0, 0x1.bb67aep-1F}},
        DecomposeRow{"FourthColumnDoesNotMatter",
                     D3DXMATRIX(1, 0, 0, 5, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 2),
                     {1, 1, 1},
                     kNoTurn}),
    NameOf<DecomposeRow>);

// --- QuaternionRotationMatrix ----------------------------------------------------------------------------------

struct QuaternionRow
{
    const char* name;
    D3DXMATRIX matrix;
    D3DXQUATERNION expected;
};

class D3DXQuaternionRotationMatrixRows : public testing::TestWithParam<QuaternionRow>
{};

TEST_P(D3DXQuaternionRotationMatrixRows, MeasuredResult)
{
    D3DXQUATERNION quaternion;
    EXPECT_TRUE(SameBitsOrNaN(*D3DXQuaternionRotationMatrix(&quaternion, &GetParam().matrix), GetParam().expected));
}

constexpr float kThird = 1.0F / 3.0F;

INSTANTIATE_TEST_SUITE_P(
    Rows, D3DXQuaternionRotationMatrixRows,
    testing::Values(
        QuaternionRow{"Identity", kIdentity, kNoTurn},
        QuaternionRow{"QuarterTurnZ", Rows({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}), {0, 0, kHalfRoot, kHalfRoot}},
        QuaternionRow{"HalfTurnX", Diagonal(1, -1, -1), {1, 0, 0, 0}},
        QuaternionRow{"HalfTurnY", Diagonal(-1, 1, -1), {0, 1, 0, 0}},
        QuaternionRow{"HalfTurnZ", Diagonal(-1, -1, 1), {0, 0, 1, 0}},
        QuaternionRow{"CyclicPermutation", Rows({0, 1, 0}, {0, 0, 1}, {1, 0, 0}), {0.5F, 0.5F, 0.5F, 0.5F}},
        QuaternionRow{
            "XLeads", Rows({0.8F, 0.6F, 0}, {0.6F, -0.8F, 0}, {0, 0, -1}), {0x1.e5b9dp-1F, 0x1.43d138p-2F, 0, 0}},
        QuaternionRow{
            "YLeads", Rows({-0.8F, 0.6F, 0}, {0.6F, 0.8F, 0}, {0, 0, -1}), {0x1.43d138p-2F, 0x1.e5b9dp-1F, 0, 0}},
        QuaternionRow{
            "ZLeads", Rows({-0.8F, 0, 0.6F}, {0, -1, 0}, {0.6F, 0, 0.8F}), {0x1.43d138p-2F, 0, 0x1.e5b9dp-1F, 0}},
        QuaternionRow{"EqualDiagonal",
                      Rows({-kThird, 2 * kThird, 2 * kThird}, {2 * kThird, -kThird, 2 * kThird},
                           {2 * kThird, 2 * kThird, -kThird}),
                      {0x1.279a74p-1F, 0x1.279a76p-1F, 0x1.279a76p-1F, 0}},
        QuaternionRow{"MirrorZ", Diagonal(1, 1, -1), kLostMirror},
        QuaternionRow{"MirrorX", Diagonal(-1, 1, 1), kLostMirror},
        QuaternionRow{"MinusIdentity", Diagonal(-1, -1, -1), {kHalfRoot, 0, 0, 0}},
        QuaternionRow{"Zero", Diagonal(0, 0, 0), {0.5F, 0, 0, 0}},
        QuaternionRow{"ScaleTwo", Diagonal(2, 2, 2), {0, 0, 0, 0x1.52a7fap+0F}},
        QuaternionRow{"YAndZTie", Rows({-1, 0, 0}, {0, 0, 1}, {0, 1, 0}), {0, kHalfRoot, kHalfRoot, 0}},
        QuaternionRow{"XAndYTie", Rows({0, 1, 0}, {1, 0, 0}, {0, 0, -1}), {kHalfRoot, kHalfRoot, 0, 0}},
        QuaternionRow{"XAndZTie", Rows({0, 0, 1}, {0, -1, 0}, {1, 0, 0}), {kHalfRoot, 0, kHalfRoot, 0}},
        QuaternionRow{"TraceOfAlmostNothingTakesTheOtherBranch", Diagonal(5e-8F, 0, 0), {0.5F, 0, 0, 0}},
        QuaternionRow{
            "NaN", Rows({kNaN, kNaN, kNaN}, {kNaN, kNaN, kNaN}, {kNaN, kNaN, kNaN}), {kNaN, kNaN, kNaN, kNaN}}),
    NameOf<QuaternionRow>);

// --- Transformation --------------------------------------------------------------------------------------------

struct Factors
{
    const D3DXVECTOR3* scalingCenter = nullptr;
    const D3DXQUATERNION* scalingRotation = nullptr;
    const D3DXVECTOR3* scaling = nullptr;
    const D3DXVECTOR3* rotationCenter = nullptr;
    const D3DXQUATERNION* rotation = nullptr;
    const D3DXVECTOR3* translation = nullptr;
};

D3DXMATRIX Transformation(const Factors& f)
{
    D3DXMATRIX out;
    return *D3DXMatrixTransformation(&out, f.scalingCenter, f.scalingRotation, f.scaling, f.rotationCenter, f.rotation,
                                     f.translation);
}

const D3DXVECTOR3 kScale(2, 3, 4);
const D3DXVECTOR3 kCenter(1, 2, 3);
const D3DXVECTOR3 kOffset(5, 6, 7);
const D3DXQUATERNION kUnit(0x1.75e974p-3F, 0x1.75e974p-2F, 0x1.186f18p-1F, 0x1.75e972p-1F);
const D3DXMATRIX kUnitRotation =
    Rows({0x1.11111p-3F, 0x1.dddddcp-1F, -0x1.555554p-2F}, {-0x1.555554p-1F, 0x1.555554p-2F, 0x1.555554p-1F},
         {0x1.777776p-1F, 0x1.111114p-3F, 0x1.555556p-1F});

TEST(D3DXMatrixTransformation, WithoutFactorsIsTheIdentity)
{
    EXPECT_TRUE(SameBitsOrNaN(Transformation({}), kIdentity));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.scalingCenter = &kCenter}), kIdentity));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.rotationCenter = &kCenter}), kIdentity));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.scalingRotation = &kUnit}), kIdentity));
}

TEST(D3DXMatrixTransformation, SingleFactors)
{
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.scaling = &kScale}), Diagonal(2, 3, 4)));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.rotation = &kUnit}), kUnitRotation));
    EXPECT_TRUE(
        SameBitsOrNaN(Transformation({.translation = &kOffset}), Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {5, 6, 7})));
}

TEST(D3DXMatrixTransformation, ScalesThenRotatesThenTranslates)
{
    const D3DXMATRIX expected =
        Rows({0x1.11111p-2F, 0x1.dddddcp+0F, -0x1.555554p-1F}, {-0x1.fffffep+0F, 0x1.fffffep-1F, 0x1.fffffep+0F},
             {0x1.777776p+1F, 0x1.111114p-1F, 0x1.555556p+1F}, {5, 6, 7});
    EXPECT_TRUE(
        SameBitsOrNaN(Transformation({.scaling = &kScale, .rotation = &kUnit, .translation = &kOffset}), expected));
}

TEST(D3DXMatrixTransformation, QuaternionIsNotNormalised)
{
    const D3DXQUATERNION longer(1, 2, 3, 4);
    const D3DXQUATERNION half(0, 0, 0.5F, 0.5F);
    const D3DXQUATERNION zero(0, 0, 0, 0);
    EXPECT_TRUE(
        SameBitsOrNaN(Transformation({.rotation = &longer}), Rows({-25, 28, -10}, {-20, -19, 20}, {22, 4, -9})));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.rotation = &half}), Rows({0.5F, 0.5F, 0}, {-0.5F, 0.5F, 0}, {0, 0, 1})));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.rotation = &zero}), kIdentity));
}

TEST(D3DXMatrixTransformation, MinusZeroBecomesZero)
{
    const D3DXVECTOR3 scaling(-2, 0, -0.0F);
    const D3DXVECTOR3 translation(-0.0F, -0.0F, -0.0F);
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.scaling = &scaling}), Diagonal(-2, 0, 0)));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.translation = &translation}), kIdentity));
}

TEST(D3DXMatrixTransformation, NaNSpreads)
{
    const D3DXQUATERNION rotation(kNaN, 0, 0, 1);
    const D3DXVECTOR3 scaling(kNaN, 1, 1);
    const D3DXVECTOR3 translation(kInf, 0, 0);
    D3DXMATRIX all;
    for (auto& row : all.m)
        for (float& value : row)
            value = kNaN;
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.rotation = &rotation}), all));
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.scaling = &scaling}), all));
    const D3DXMATRIX moved = Transformation({.translation = &translation});
    EXPECT_TRUE(SameBitsOrNaN(moved, D3DXMATRIX(kNaN, 0, 0, 0, kNaN, 1, 0, 0, kNaN, 0, 1, 0, kInf, 0, 0, 1)));
}

TEST(D3DXMatrixTransformation, CentresDoNotMove)
{
    const D3DXMATRIX scaled = Transformation({.scalingCenter = &kCenter, .scaling = &kScale});
    EXPECT_TRUE(SameBitsOrNaN(scaled, Rows({2, 0, 0}, {0, 3, 0}, {0, 0, 4}, {-1, -4, -9})));
    D3DXMATRIX turned = kUnitRotation;
    turned._41 = 0x1p-23F;
    EXPECT_TRUE(SameBitsOrNaN(Transformation({.rotationCenter = &kCenter, .rotation = &kUnit}), turned));
}

TEST(D3DXMatrixTransformation, RandomFactorsEqualTheProductOfTheSingleOnes)
{
    RandomFloats random(6);
    for (int n = 0; n < 2000; ++n)
    {
        const D3DXVECTOR3 scaling = random.Vector(3);
        const D3DXQUATERNION rotation = random.Rotation();
        const D3DXVECTOR3 translation = random.Vector(10);
        D3DXMATRIX product = Transformation({.scaling = &scaling});
        const D3DXMATRIX turn = Transformation({.rotation = &rotation});
        const D3DXMATRIX move = Transformation({.translation = &translation});
        D3DXMatrixMultiply(&product, &product, &turn);
        D3DXMatrixMultiply(&product, &product, &move);
        ASSERT_TRUE(SameBitsOrNaN(
            Transformation({.scaling = &scaling, .rotation = &rotation, .translation = &translation}), product));
    }
}

TEST(D3DXMatrixTransformation, DecomposesIntoItsFactors)
{
    RandomFloats random(7);
    for (int n = 0; n < 2000; ++n)
    {
        const D3DXVECTOR3 scaling(random.Between(0.5F, 2), random.Between(0.5F, 2), random.Between(0.5F, 2));
        D3DXQUATERNION rotation = random.Rotation();
        const D3DXVECTOR3 translation = random.Vector(10);
        const D3DXMATRIX matrix =
            Transformation({.scaling = &scaling, .rotation = &rotation, .translation = &translation});
        D3DXVECTOR3 s;
        D3DXQUATERNION q;
        D3DXVECTOR3 t;
        ASSERT_EQ(D3DXMatrixDecompose(&s, &q, &t, &matrix), 0);
        ASSERT_TRUE(Support::NearFloats(s, scaling, 1e-5F)) << n;
        ASSERT_TRUE(SameBitsOrNaN(t, translation)) << n;
        // A quaternion and its negation are the same rotation.
        if (q.x * rotation.x + q.y * rotation.y + q.z * rotation.z + q.w * rotation.w < 0)
            q = D3DXQUATERNION(-q.x, -q.y, -q.z, -q.w);
        ASSERT_TRUE(Support::NearFloats(q, rotation, 1e-5F)) << n;
    }
}

}  // namespace
