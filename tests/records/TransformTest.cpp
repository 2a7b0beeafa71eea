#include <importing/records/Transform.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace
{

using Importing::Transform;
using Support::NearFloats;
using Support::RandomFloats;
using Support::SameBitsOrNaN;

constexpr D3DXMATRIX kCounted(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
constexpr D3DXVECTOR3 kUntouched(77, 77, 77);
constexpr float kAttitudeAtPole = 1.57075F;
constexpr float kPi = std::numbers::pi_v<float>;

/// Makes the two protected conversions public.
class Conversions : public Transform
{
public:
    using Transform::Euler2Quaterion;
    using Transform::Quaterion2Euler;

    D3DXVECTOR3 Euler(const D3DXQUATERNION& q) const
    {
        D3DXVECTOR3 euler;
        Quaterion2Euler(q, euler);
        return euler;
    }
};

struct EulerParts
{
    D3DXVECTOR3 translation = kUntouched;
    D3DXVECTOR3 rotation = kUntouched;
    D3DXVECTOR3 scale = kUntouched;
    bool result = false;

    explicit EulerParts(const Transform& t) { result = t.GetEuler(translation, rotation, scale); }
};

struct QuaternionParts
{
    D3DXVECTOR3 translation = kUntouched;
    D3DXQUATERNION rotation{77, 77, 77, 77};
    D3DXVECTOR3 scale = kUntouched;
    bool result = false;

    explicit QuaternionParts(const Transform& t) { result = t.GetQuaterion(translation, rotation, scale); }
};

Transform OfEuler(D3DXVECTOR3 translation, const D3DXVECTOR3& rotation, const D3DXVECTOR3& scale)
{
    Transform transform;
    transform.SetEuler(translation, rotation, scale);
    return transform;
}

Transform OfQuaternion(D3DXVECTOR3 translation, const D3DXQUATERNION& rotation, const D3DXVECTOR3& scale)
{
    Transform transform;
    transform.SetQuaterion(translation, rotation, scale);
    return transform;
}

/// Returns a transform whose type is outside the enumeration.
Transform OfUnknownForm()
{
    Transform transform(kCounted);
    const_cast<Transform::StoredForm&>(transform.GetStoredForm()).type = static_cast<Transform::Type>(7);
    return transform;
}

D3DXQUATERNION Negated(const D3DXQUATERNION& q) { return {-q.x, -q.y, -q.z, -q.w}; }

TEST(Transform, DefaultIsTheIdentityAsAMatrix)
{
    Transform transform;
    EXPECT_EQ(transform.GetType(), Transform::Type::Matrix);
    EXPECT_TRUE(SameBitsOrNaN(transform.GetMatrix(), Transform::Indentity));
}

TEST(Transform, IndentityIsTheIdentityAndWritable)
{
    EXPECT_TRUE(SameBitsOrNaN(Transform::Indentity, D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)));
    Transform::Indentity._14 = 3;
    EXPECT_EQ(Transform::Indentity._14, 3.0F);
    Transform::Indentity._14 = 0;
    EXPECT_EQ(Transform().GetMatrix()._14, 0.0F);
}

TEST(Transform, FormsHaveFixedNumbers)
{
    EXPECT_EQ(static_cast<int>(Transform::Type::Matrix), 0);
    EXPECT_EQ(static_cast<int>(Transform::Type::Euler), 1);
    EXPECT_EQ(static_cast<int>(Transform::Type::Quaternion), 2);
    EXPECT_EQ(sizeof(Transform::Type), 4U);
}

TEST(Transform, ConstructedFromAMatrixOrItsFloats)
{
    Transform fromMatrix(kCounted);
    EXPECT_EQ(fromMatrix.GetType(), Transform::Type::Matrix);
    EXPECT_TRUE(SameBitsOrNaN(fromMatrix.GetMatrix(), kCounted));
    Transform fromFloats(&kCounted.m[0][0]);
    EXPECT_EQ(fromFloats.GetType(), Transform::Type::Matrix);
    EXPECT_TRUE(SameBitsOrNaN(fromFloats.GetMatrix(), kCounted));
}

TEST(Transform, SettersStoreTheGivenForm)
{
    Transform transform(kCounted);
    D3DXVECTOR3 translation(21, 22, 23);
    transform.SetEuler(translation, D3DXVECTOR3(24, 25, 26), D3DXVECTOR3(27, 28, 29));
    EXPECT_EQ(transform.GetType(), Transform::Type::Euler);
    const float euler[16] = {21, 22, 23, 4, 24, 25, 26, 8, 27, 28, 29, 12, 13, 14, 15, 16};
    EXPECT_TRUE(SameBitsOrNaN(D3DXMATRIX(transform.GetStoredForm().values), D3DXMATRIX(euler)));

    transform.SetQuaterion(translation, D3DXQUATERNION(34, 35, 36, 37), D3DXVECTOR3(38, 39, 40));
    EXPECT_EQ(transform.GetType(), Transform::Type::Quaternion);
    const float quaternion[16] = {21, 22, 23, 4, 34, 35, 36, 37, 38, 39, 40, 12, 13, 14, 15, 16};
    EXPECT_TRUE(SameBitsOrNaN(D3DXMATRIX(transform.GetStoredForm().values), D3DXMATRIX(quaternion)));

    transform.SetMatrix(kCounted);
    EXPECT_EQ(transform.GetType(), Transform::Type::Matrix);
    EXPECT_TRUE(SameBitsOrNaN(transform.GetMatrix(), kCounted));
}

TEST(Transform, CopiesHaveFloatsAndForm)
{
    const Transform original = OfQuaternion({1, 2, 3}, {4, 5, 6, 7}, {8, 9, 10});
    Transform copy(original);
    Transform assigned;
    assigned = original;
    for (Transform* transform : {&copy, &assigned})
    {
        EXPECT_EQ(transform->GetType(), Transform::Type::Quaternion);
        EXPECT_TRUE(SameBitsOrNaN(transform->GetStoredForm(), original.GetStoredForm()));
    }
}

TEST(Transform, EulerFormWithoutRotationIsATranslation)
{
    Transform transform = OfEuler({5, 6, 7}, {0, 0, 0}, {1, 1, 1});
    EXPECT_TRUE(SameBitsOrNaN(transform.GetMatrix(), D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1)));
}

TEST(Transform, MatrixOfAQuaternionScalesThenRotatesThenTranslates)
{
    const float half = std::sqrt(0.5F);
    Transform transform = OfQuaternion({10, 20, 30}, {0, 0, half, half}, {2, 3, 4});
    const D3DXMATRIX expected(0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 10, 20, 30, 1);
    EXPECT_TRUE(NearFloats(transform.GetMatrix(), expected, 1e-6F));
}

TEST(Transform, MatrixOfAnglesEqualsThatOfTheirQuaternion)
{
    RandomFloats random(1);
    for (int i = 0; i < 500; ++i)
    {
        const D3DXVECTOR3 translation = random.Vector(10);
        const D3DXVECTOR3 angles = random.Vector(4);
        const D3DXVECTOR3 scale = random.Vector(3);
        const D3DXQUATERNION quaternion = Conversions().Euler2Quaterion(angles);
        ASSERT_TRUE(SameBitsOrNaN(OfEuler(translation, angles, scale).GetMatrix(),
                                  OfQuaternion(translation, quaternion, scale).GetMatrix()));
    }
}

TEST(Transform, HeadingRotatesAboutYAttitudeAboutZBankAboutX)
{
    const float half = std::sqrt(0.5F);
    Conversions conversions;
    const auto quarter = kPi / 2;
    EXPECT_TRUE(NearFloats(conversions.Euler2Quaterion({quarter, 0, 0}), D3DXQUATERNION(0, half, 0, half), 1e-6F));
    EXPECT_TRUE(NearFloats(conversions.Euler2Quaterion({0, quarter, 0}), D3DXQUATERNION(0, 0, half, half), 1e-6F));
    EXPECT_TRUE(NearFloats(conversions.Euler2Quaterion({0, 0, quarter}), D3DXQUATERNION(half, 0, 0, half), 1e-6F));
}

TEST(Transform, QuaternionOfThreeAnglesFollowsTheFormula)
{
    RandomFloats random(2);
    for (int i = 0; i < 1000; ++i)
    {
        const D3DXVECTOR3 e = random.Vector(kPi);
        const auto c = [](float angle) { return std::cos(static_cast<double>(angle) / 2); };
        const auto s = [](float angle) { return std::sin(static_cast<double>(angle) / 2); };
        const D3DXQUATERNION q = Conversions().Euler2Quaterion(e);
        ASSERT_NEAR(q.w, c(e.x) * c(e.y) * c(e.z) - s(e.x) * s(e.y) * s(e.z), 1e-6);
        ASSERT_NEAR(q.x, c(e.x) * c(e.y) * s(e.z) + s(e.x) * s(e.y) * c(e.z), 1e-6);
        ASSERT_NEAR(q.y, s(e.x) * c(e.y) * c(e.z) + c(e.x) * s(e.y) * s(e.z), 1e-6);
        ASSERT_NEAR(q.z, c(e.x) * s(e.y) * c(e.z) - s(e.x) * c(e.y) * s(e.z), 1e-6);
    }
}

TEST(Transform, AnglesOfAQuaternionReproduceItUpToSign)
{
    RandomFloats random(3);
    Conversions conversions;
    int tested = 0;
    for (int i = 0; i < 5000; ++i)
    {
        const D3DXQUATERNION q = random.Rotation();
        if (std::abs(q.x * q.y + q.z * q.w) > 0.49F)
            continue;  // near the poles
        D3DXQUATERNION again = conversions.Euler2Quaterion(EulerParts(OfQuaternion({0, 0, 0}, q, {1, 1, 1})).rotation);
        if (again.x * q.x + again.y * q.y + again.z * q.z + again.w * q.w < 0)
            again = Negated(again);
        ASSERT_TRUE(NearFloats(again, q, 2e-4F)) << Support::HexText(q);
        ++tested;
    }
    EXPECT_GT(tested, 4000);
}

TEST(Transform, AnglesAwayFromThePolesReproduceThemselves)
{
    RandomFloats random(4);
    for (int i = 0; i < 2000; ++i)
    {
        const D3DXVECTOR3 angles(random.Between(-3, 3), random.Between(-1.3F, 1.3F), random.Between(-3, 3));
        Conversions conversions;
        ASSERT_TRUE(NearFloats(conversions.Euler(conversions.Euler2Quaterion(angles)), angles, 2e-4F));
    }
}

TEST(Transform, QuaternionNeedNotBeNormalised)
{
    RandomFloats random(5);
    const Conversions conversions;
    for (int i = 0; i < 500; ++i)
    {
        const D3DXQUATERNION q = random.Rotation();
        const D3DXQUATERNION longer(q.x * 4, q.y * 4, q.z * 4, q.w * 4);
        ASSERT_TRUE(SameBitsOrNaN(conversions.Euler(longer), conversions.Euler(q))) << "a power of two changes no bit";
    }
}

/// Returns a unit quaternion whose x y + z w is `test`: half of the sine of twice the angle of (z, w).
D3DXQUATERNION WithTest(double test)
{
    const double angle = std::asin(2 * test) / 2;
    return {0, 0, static_cast<float>(std::sin(angle)), static_cast<float>(std::cos(angle))};
}

TEST(Transform, NearAPoleTheAttitudeIsSlightlyLessThanARightAngle)
{
    const Conversions conversions;
    const D3DXVECTOR3 north = conversions.Euler(WithTest(0.4995));
    EXPECT_EQ(Support::Bits(north.y), 0x3FC90E56U);
    EXPECT_EQ(Support::Bits(kAttitudeAtPole), 0x3FC90E56U);
    EXPECT_TRUE(SameBitsOrNaN(north, D3DXVECTOR3(0, kAttitudeAtPole, 0)));
    const D3DXVECTOR3 south = conversions.Euler(WithTest(-0.4995));
    EXPECT_EQ(Support::Bits(south.y), 0xBFC90E56U);
    EXPECT_EQ(south.z, 0.0F);
}

TEST(Transform, OutsideThePolesTheAttitudeIsComputed)
{
    const Conversions conversions;
    EXPECT_NEAR(conversions.Euler(WithTest(0.4985)).y, std::asin(2 * 0.4985), 1e-4);
    EXPECT_NEAR(conversions.Euler(WithTest(-0.4985)).y, -std::asin(2 * 0.4985), 1e-4);
}

TEST(Transform, HeadingAtThePolesIsTwiceTheAngleOfXAndW)
{
    const Conversions conversions;
    // With x = y and z = w, x y + z w is half of the sum of squares: an attitude of 90 degrees.
    const D3DXVECTOR3 north = conversions.Euler({0.3F, 0.3F, 0.4F, 0.4F});
    EXPECT_NEAR(north.x, 2 * std::atan2(0.3F, 0.4F), 1e-5);
    EXPECT_EQ(north.y, kAttitudeAtPole);
    EXPECT_EQ(north.z, 0.0F);
    const D3DXVECTOR3 south = conversions.Euler({0.3F, -0.3F, -0.4F, 0.4F});
    EXPECT_NEAR(south.x, -2 * std::atan2(0.3F, 0.4F), 1e-5);
    EXPECT_EQ(south.y, -kAttitudeAtPole);
    EXPECT_EQ(south.z, 0.0F);
}

TEST(Transform, PoleTestIsInDoublePrecision)
{
    // Here z is above 0.499 (z^2 + 1) with the double 0.499, but not with the float, which is slightly larger.
    const float z = 0x1.e0988ap-1F;
    ASSERT_FALSE(z > 0.499F * (z * z + 1.0F));
    const Conversions conversions;
    EXPECT_EQ(conversions.Euler({0, 0, z, 1}).y, kAttitudeAtPole);
    EXPECT_EQ(conversions.Euler({0, 0, -z, 1}).y, -kAttitudeAtPole);
}

TEST(Transform, EulerGetterReturnsWhatWasSet)
{
    const EulerParts parts(OfEuler({1, 2, 3}, {4, 5, 6}, {7, 8, 9}));
    EXPECT_TRUE(parts.result);
    EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(1, 2, 3)));
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXVECTOR3(4, 5, 6)));
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(7, 8, 9)));
}

TEST(Transform, QuaternionGetterReturnsWhatWasSet)
{
    const QuaternionParts parts(OfQuaternion({1, 2, 3}, {4, 5, 6, 7}, {8, 9, 10}));
    EXPECT_TRUE(parts.result);
    EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(1, 2, 3)));
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXQUATERNION(4, 5, 6, 7)));
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(8, 9, 10)));
}

TEST(Transform, QuaternionOfAnglesIsTheAnglesThemselves)
{
    const QuaternionParts parts(OfEuler({1, 2, 3}, {0.25F, 0.5F, 0.75F}, {7, 8, 9}));
    EXPECT_TRUE(parts.result);
    EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(1, 2, 3)));
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXQUATERNION(0.25F, 0.5F, 0.75F, 1)));
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(7, 8, 9)));
}

TEST(Transform, AnglesOfAQuaternionFormAreConverted)
{
    const D3DXQUATERNION q(0.1F, 0.2F, 0.3F, 0.9F);
    const EulerParts parts(OfQuaternion({1, 2, 3}, q, {8, 9, 10}));
    EXPECT_TRUE(parts.result);
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, Conversions().Euler(q)));
    EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(1, 2, 3)));
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(8, 9, 10)));
}

TEST(Transform, MatrixIsDecomposed)
{
    const D3DXMATRIX matrix(0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 5, 6, 7, 1);
    const QuaternionParts parts{Transform(matrix)};
    EXPECT_TRUE(parts.result);
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(2, 3, 4)));
    EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(5, 6, 7)));
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXQUATERNION(0, 0, 0x1.6a09e6p-1F, 0x1.6a09e6p-1F)));

    const EulerParts euler{Transform(matrix)};
    EXPECT_TRUE(euler.result);
    EXPECT_TRUE(SameBitsOrNaN(euler.scale, D3DXVECTOR3(2, 3, 4)));
    EXPECT_TRUE(SameBitsOrNaN(euler.translation, D3DXVECTOR3(5, 6, 7)));
    EXPECT_TRUE(SameBitsOrNaN(euler.rotation, D3DXVECTOR3(0, kAttitudeAtPole, 0)));
}

TEST(Transform, MatrixThatCannotBeDecomposedIsNotAnError)
{
    const Transform flat(D3DXMATRIX(0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 9, 0, 0, 1));
    const QuaternionParts parts(flat);
    EXPECT_TRUE(parts.result);
    EXPECT_TRUE(SameBitsOrNaN(parts.scale, D3DXVECTOR3(0, 3, 4)));
    EXPECT_TRUE(SameBitsOrNaN(parts.translation, D3DXVECTOR3(9, 0, 0)));
    EXPECT_TRUE(SameBitsOrNaN(parts.rotation, D3DXQUATERNION(77, 77, 77, 77))) << "not written";

    const EulerParts euler(flat);
    EXPECT_TRUE(euler.result);
    EXPECT_TRUE(SameBitsOrNaN(euler.scale, D3DXVECTOR3(0, 3, 4)));
    EXPECT_TRUE(SameBitsOrNaN(euler.rotation, D3DXVECTOR3(0, 0, 0)));
}

TEST(Transform, UnknownFormReturnsTheStoredFloatsAndWritesNothing)
{
    Transform transform = OfUnknownForm();
    EXPECT_TRUE(SameBitsOrNaN(transform.GetMatrix(), kCounted));
    const EulerParts euler(transform);
    EXPECT_TRUE(euler.result);
    EXPECT_TRUE(SameBitsOrNaN(euler.translation, kUntouched));
    EXPECT_TRUE(SameBitsOrNaN(euler.rotation, kUntouched));
    EXPECT_TRUE(SameBitsOrNaN(euler.scale, kUntouched));
    const QuaternionParts quaternion(transform);
    EXPECT_TRUE(quaternion.result);
    EXPECT_TRUE(SameBitsOrNaN(quaternion.translation, kUntouched));
    EXPECT_TRUE(SameBitsOrNaN(quaternion.rotation, D3DXQUATERNION(77, 77, 77, 77)));
    EXPECT_TRUE(SameBitsOrNaN(quaternion.scale, kUntouched));
}

/// A transform that overrides the conversions.
class OwnConversions : public Transform
{
protected:
    void Quaterion2Euler(const D3DXQUATERNION&, D3DXVECTOR3& euler) const override { euler = D3DXVECTOR3(1, 2, 3); }
    D3DXQUATERNION Euler2Quaterion(const D3DXVECTOR3&) override { return {0, 0, 1, 0}; }
};

TEST(Transform, ConversionsGoThroughTheVirtualTable)
{
    D3DXVECTOR3 translation(0, 0, 0);
    OwnConversions transform;
    EXPECT_TRUE(SameBitsOrNaN(EulerParts(transform).rotation, D3DXVECTOR3(1, 2, 3)));
    transform.SetQuaterion(translation, D3DXQUATERNION(0, 0, 0, 1), D3DXVECTOR3(1, 1, 1));
    EXPECT_TRUE(SameBitsOrNaN(EulerParts(transform).rotation, D3DXVECTOR3(1, 2, 3)));
    transform.SetEuler(translation, D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1));
    EXPECT_EQ(transform.GetMatrix()._11, -1.0F);
}

}  // namespace
