#include <importing/math/D3DXMath.h>

#include <gtest/gtest.h>
#include <math/FloatBits.h>
#include <support/Random.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <limits>
#include <type_traits>

#include <windows.h>

// Compares every math function of this library with the platform's function of the same name, bit by bit. Where the
// platform's library is missing, the tests print a message and pass.

namespace
{

using Support::FromBits;
using Support::Random;
using Support::SameBitsOrNaN;

constexpr int kInputs = 120000;

/// Returns the platform's function of this name, or null after a message if the library is missing.
template <typename Function>
Function* PlatformFunction(const char* name)
{
    static const HMODULE library = LoadLibraryA("d3dx9_43.dll");
    if (library == nullptr)
    {
        std::printf("not compared: there is no d3dx9_43.dll to take %s from\n", name);
        return nullptr;
    }
    auto* function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    EXPECT_NE(function, nullptr) << name;
    return function;
}

#define PLATFORM_FUNCTION(name) PlatformFunction<std::remove_pointer_t<decltype(&(name))>>(#name)

/// Inputs of several kinds, which cover different branches of the functions.
class Inputs
{
public:
    explicit Inputs(std::uint64_t seed) : random_(seed) {}

    /// Chooses the kind of numbers until the next call.
    void NextKind() { kind_ = random_.Below(4); }

    float Number()
    {
        switch (kind_)
        {
            case 0:
                return random_.OneIn(8) ? Special() : random_.Between(-10, 10);
            case 1:
                return FromBits(random_.Next());
            case 2:
                return static_cast<float>(random_.Below(7)) - 3.0F;
            default:
                return random_.Between(-1, 1);
        }
    }

    D3DXVECTOR2 Vector2()
    {
        const float x = Number();
        return {x, Number()};
    }

    D3DXVECTOR3 Vector3()
    {
        const float x = Number();
        const float y = Number();
        return {x, y, Number()};
    }

    D3DXQUATERNION Quaternion()
    {
        const float x = Number();
        const float y = Number();
        const float z = Number();
        return {x, y, z, Number()};
    }

    D3DXMATRIX Matrix()
    {
        D3DXMATRIX matrix;
        for (auto& row : matrix.m)
            for (float& value : row)
                value = Number();
        if (random_.OneIn(2))
            matrix._14 = matrix._24 = matrix._34 = 0.0F;
        return matrix;
    }

    /// Returns mostly rotations, some by nearly 180 degrees, some with rows of a wrong length.
    D3DXMATRIX Rotation()
    {
        if (random_.OneIn(3))
            return Matrix();
        const float w = random_.OneIn(3) ? 0.0F : random_.Between(-1, 1);
        D3DXQUATERNION q(random_.Between(-1, 1), 0, 0, w);
        q.y = random_.OneIn(4) ? q.x : random_.Between(-1, 1);
        q.z = random_.OneIn(4) ? q.y : random_.Between(-1, 1);
        const float length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
        if (!random_.OneIn(4))
            q = D3DXQUATERNION(q.x / length, q.y / length, q.z / length, q.w / length);
        D3DXMATRIX matrix;
        D3DXMatrixTransformation(&matrix, nullptr, nullptr, nullptr, nullptr, &q, nullptr);
        return matrix;
    }

    bool OneIn(std::uint32_t count) { return random_.OneIn(count); }

private:
    float Special()
    {
        using Limits = std::numeric_limits<float>;
        static const float values[] = {0.0F,
                                       -0.0F,
                                       1.0F,
                                       -1.0F,
                                       Limits::infinity(),
                                       -Limits::infinity(),
                                       Limits::quiet_NaN(),
                                       Limits::denorm_min(),
                                       -Limits::denorm_min(),
                                       Limits::min(),
                                       Limits::max(),
                                       -Limits::max(),
                                       1e20F,
                                       1e-22F,
                                       1e30F,
                                       5e-8F};
        return values[random_.Below(static_cast<std::uint32_t>(std::size(values)))];
    }

    Random random_;
    std::uint32_t kind_ = 0;
};

TEST(PlatformMath, MatrixMultiply)
{
    auto* platform = PLATFORM_FUNCTION(D3DXMatrixMultiply);
    Inputs inputs(1);
    for (int i = 0; platform != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXMATRIX a = inputs.Matrix();
        const D3DXMATRIX b = inputs.Matrix();
        D3DXMATRIX ours;
        D3DXMATRIX theirs;
        EXPECT_EQ(D3DXMatrixMultiply(&ours, &a, &b), &ours);
        platform(&theirs, &a, &b);
        ASSERT_TRUE(SameBitsOrNaN(ours, theirs)) << "input " << i;
    }
}

TEST(PlatformMath, MatrixMultiplyInPlace)
{
    auto* platform = PLATFORM_FUNCTION(D3DXMatrixMultiply);
    Inputs inputs(2);
    for (int i = 0; platform != nullptr && i < kInputs; ++i)
    {
        D3DXMATRIX ours = inputs.Matrix();
        D3DXMATRIX theirs = ours;
        D3DXMatrixMultiply(&ours, &ours, &ours);
        platform(&theirs, &theirs, &theirs);
        ASSERT_TRUE(SameBitsOrNaN(ours, theirs)) << "input " << i;
    }
}

TEST(PlatformMath, MatrixDeterminant)
{
    auto* platform = PLATFORM_FUNCTION(D3DXMatrixDeterminant);
    Inputs inputs(3);
    for (int i = 0; platform != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXMATRIX matrix = inputs.Matrix();
        ASSERT_TRUE(SameBitsOrNaN(D3DXMatrixDeterminant(&matrix), platform(&matrix))) << "input " << i;
    }
}

/// Compares two functions that make a matrix from three numbers.
void CompareFromThreeNumbers(D3DXMATRIX* (*ours)(D3DXMATRIX*, float, float, float),
                             D3DXMATRIX* (*theirs)(D3DXMATRIX*, float, float, float))
{
    Inputs inputs(4);
    for (int i = 0; theirs != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXVECTOR3 v = inputs.Vector3();
        D3DXMATRIX a = inputs.Matrix();
        D3DXMATRIX b = inputs.Matrix();
        ours(&a, v.x, v.y, v.z);
        theirs(&b, v.x, v.y, v.z);
        ASSERT_TRUE(SameBitsOrNaN(a, b)) << "input " << i;
    }
}

TEST(PlatformMath, MatrixScaling) { CompareFromThreeNumbers(&D3DXMatrixScaling, PLATFORM_FUNCTION(D3DXMatrixScaling)); }

TEST(PlatformMath, MatrixTranslation)
{
    CompareFromThreeNumbers(&D3DXMatrixTranslation, PLATFORM_FUNCTION(D3DXMatrixTranslation));
}

TEST(PlatformMath, MatrixTransformation)
{
    auto* platform = PLATFORM_FUNCTION(D3DXMatrixTransformation);
    Inputs inputs(5);
    for (int i = 0; platform != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXVECTOR3 scaling = inputs.Vector3();
        const D3DXQUATERNION rotation = inputs.Quaternion();
        const D3DXVECTOR3 translation = inputs.Vector3();
        const D3DXVECTOR3* s = inputs.OneIn(4) ? nullptr : &scaling;
        const D3DXQUATERNION* q = inputs.OneIn(4) ? nullptr : &rotation;
        const D3DXVECTOR3* t = inputs.OneIn(4) ? nullptr : &translation;
        D3DXMATRIX ours;
        D3DXMATRIX theirs;
        D3DXMatrixTransformation(&ours, nullptr, nullptr, s, nullptr, q, t);
        platform(&theirs, nullptr, nullptr, s, nullptr, q, t);
        ASSERT_TRUE(SameBitsOrNaN(ours, theirs)) << "input " << i;
    }
}

TEST(PlatformMath, MatrixDecompose)
{
    auto* platform = PLATFORM_FUNCTION(D3DXMatrixDecompose);
    struct Parts
    {
        D3DXVECTOR3 scale;
        D3DXQUATERNION rotation;
        D3DXVECTOR3 translation;
    };
    Inputs inputs(6);
    for (int i = 0; platform != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXMATRIX matrix = inputs.Matrix();
        Parts ours = {D3DXVECTOR3(1, 2, 3), D3DXQUATERNION(4, 5, 6, 7), D3DXVECTOR3(8, 9, 10)};
        Parts theirs = ours;
        const HRESULT result = D3DXMatrixDecompose(&ours.scale, &ours.rotation, &ours.translation, &matrix);
        ASSERT_EQ(result, platform(&theirs.scale, &theirs.rotation, &theirs.translation, &matrix)) << "input " << i;
        ASSERT_TRUE(SameBitsOrNaN(ours, theirs)) << "input " << i;
    }
}

TEST(PlatformMath, QuaternionRotationMatrix)
{
    auto* platform = PLATFORM_FUNCTION(D3DXQuaternionRotationMatrix);
    Inputs inputs(7);
    for (int i = 0; platform != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXMATRIX matrix = inputs.Rotation();
        D3DXQUATERNION ours;
        D3DXQUATERNION theirs;
        D3DXQuaternionRotationMatrix(&ours, &matrix);
        platform(&theirs, &matrix);
        ASSERT_TRUE(SameBitsOrNaN(ours, theirs)) << "input " << i;
    }
}

/// Compares two functions that transform a vector by a matrix, also in place.
template <typename Vector, typename Function>
void CompareTransforms(Vector (Inputs::*next)(), Function* ours, Function* theirs)
{
    Inputs inputs(8);
    for (int i = 0; theirs != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXMATRIX matrix = inputs.Matrix();
        const Vector vector = (inputs.*next)();
        Vector a;
        Vector b;
        ours(&a, &vector, &matrix);
        theirs(&b, &vector, &matrix);
        ASSERT_TRUE(SameBitsOrNaN(a, b)) << "input " << i;
        a = vector;
        ours(&a, &a, &matrix);
        ASSERT_TRUE(SameBitsOrNaN(a, b)) << "input " << i << ", in place";
    }
}

TEST(PlatformMath, Vec3TransformCoord)
{
    CompareTransforms(&Inputs::Vector3, &D3DXVec3TransformCoord, PLATFORM_FUNCTION(D3DXVec3TransformCoord));
}

TEST(PlatformMath, Vec3TransformNormal)
{
    CompareTransforms(&Inputs::Vector3, &D3DXVec3TransformNormal, PLATFORM_FUNCTION(D3DXVec3TransformNormal));
}

TEST(PlatformMath, Vec2TransformCoord)
{
    CompareTransforms(&Inputs::Vector2, &D3DXVec2TransformCoord, PLATFORM_FUNCTION(D3DXVec2TransformCoord));
}

TEST(PlatformMath, Vec3Normalize)
{
    auto* platform = PLATFORM_FUNCTION(D3DXVec3Normalize);
    Inputs inputs(9);
    for (int i = 0; platform != nullptr && i < kInputs; ++i)
    {
        inputs.NextKind();
        const D3DXVECTOR3 vector = inputs.Vector3();
        D3DXVECTOR3 ours;
        D3DXVECTOR3 theirs;
        D3DXVec3Normalize(&ours, &vector);
        platform(&theirs, &vector);
        ASSERT_TRUE(SameBitsOrNaN(ours, theirs)) << "input " << i;
    }
}

#undef PLATFORM_FUNCTION

}  // namespace
