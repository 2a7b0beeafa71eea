#include <importing/math/D3DXMath.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

// Results have the same bits on every platform only if every expression is evaluated as written. These tests fail when
// a compiler or its options fuse, widen, reorder or flush. Inputs are volatile, so that nothing is evaluated at compile
// time.

namespace
{

/// The square is 1 + 2^-11 + 2^-24. A float keeps 1 + 2^-11; a fused step also keeps 2^-24.
volatile float nearOne = 0x1.001p+0F;
volatile float roundedSquare = 0x1.002p+0F;

TEST(FloatEvaluation, EvaluatesInTheTypeOfTheOperands) { EXPECT_EQ(FLT_EVAL_METHOD, 0); }

TEST(FloatEvaluation, SumOfProductAndNumberIsNotFused)
{
    const float a = nearOne;
    const float c = -roundedSquare;
    EXPECT_EQ(a * a + c, 0.0F);
    EXPECT_EQ(c + a * a, 0.0F);
    EXPECT_EQ(std::fma(a, a, c), 0x1p-24F) << "the inputs detect a fused step";
}

TEST(FloatEvaluation, DifferenceOfNumberAndProductIsNotFused)
{
    const float a = nearOne;
    const float c = roundedSquare;
    EXPECT_EQ(c - a * a, 0.0F);
}

TEST(FloatEvaluation, DifferenceOfProductsIsNotFused)
{
    const float a = nearOne;
    const float b = nearOne;
    const float c = nearOne;
    const float d = nearOne;
    EXPECT_EQ(a * b - c * d, 0.0F);
}

TEST(FloatEvaluation, IntermediateSumIsRounded)
{
    volatile float large = 0x1p+24F;
    volatile float one = 1.0F;
    const float a = large;
    const float b = one;
    EXPECT_EQ((a + b) - a, 0.0F);
}

TEST(FloatEvaluation, IntermediateProductOverflows)
{
    volatile float largest = std::numeric_limits<float>::max();
    volatile float two = 2.0F;
    const float a = largest;
    const float b = two;
    EXPECT_EQ(a * b / b, std::numeric_limits<float>::infinity());
}

TEST(FloatEvaluation, SumsAreNotReordered)
{
    volatile float large = 0x1p+30F;
    volatile float one = 1.0F;
    const float a = large;
    const float b = one;
    EXPECT_EQ((b + a) - a, 0.0F);
    EXPECT_EQ(b + (a - a), 1.0F);
}

TEST(FloatEvaluation, DivisionIsNotAProductWithTheReciprocal)
{
    volatile float five = 5.0F;
    volatile float three = 3.0F;
    const float a = five;
    const float b = three;
    EXPECT_EQ(a / b, 0x1.aaaaaap+0F);
    EXPECT_EQ(a * (1.0F / b), 0x1.aaaaacp+0F) << "the inputs detect a reciprocal";
}

TEST(FloatEvaluation, DenormalNumbersAreKept)
{
    volatile float smallest = std::numeric_limits<float>::min();
    const float half = smallest / 2.0F;
    EXPECT_GT(half, 0.0F);
    EXPECT_EQ(half * 2.0F, std::numeric_limits<float>::min());
}

TEST(FloatEvaluation, NaNEqualsNothing)
{
    volatile float nan = std::numeric_limits<float>::quiet_NaN();
    const float a = nan;
    EXPECT_FALSE(a == a);
    EXPECT_FALSE(a < 0.0F || a >= 0.0F);
}

TEST(FloatEvaluation, ZeroKeepsItsSign)
{
    volatile float zero = 0.0F;
    const float a = zero;
    EXPECT_TRUE(std::signbit(-a));
    EXPECT_FALSE(std::signbit(0.0F + -a));
}

TEST(FloatEvaluation, TheLibraryIsNotFusedEither)
{
    // The determinant reduces to the minor of rows and columns 3 and 4: a difference of two equal products.
    const float a = nearOne;
    const D3DXMATRIX matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, a, a, 0, 0, a, a);
    EXPECT_EQ(D3DXMatrixDeterminant(&matrix), 0.0F);
}

TEST(FloatEvaluation, InlineFunctionsAreNotFusedEither)
{
    const float a = nearOne;
    const D3DXMATRIX matrix(a, 0, 0, 0, -roundedSquare, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1);
    const D3DXVECTOR3 vector(a, 1, 0);
    D3DXVECTOR3 carried;
    D3DXVec3TransformNormal(&carried, &vector, &matrix);
    EXPECT_EQ(carried.x, 0.0F);
    D3DXVec3TransformCoord(&carried, &vector, &matrix);
    EXPECT_EQ(carried.x, 0.0F);
}

}  // namespace
