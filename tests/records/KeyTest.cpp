#include <importing/records/Key.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

using Importing::Key;
using Support::SameBitsOrNaN;

Key Filled()
{
    Key key;
    key.SetTime(4000000000U);
    key.SetPosition(D3DXVECTOR3(1, 2, 3));
    key.SetRotation(D3DXQUATERNION(4, 5, 6, 7));
    key.SetScale(D3DXVECTOR3(8, 9, 10));
    return key;
}

TEST(Key, Defaults)
{
    Key key;
    EXPECT_EQ(key.GetTime(), 0U);
    EXPECT_TRUE(SameBitsOrNaN(key.GetPosition(), D3DXVECTOR3(0, 0, 0)));
    EXPECT_TRUE(SameBitsOrNaN(key.GetRotation(), D3DXQUATERNION(0, 0, 0, 1)));
    EXPECT_TRUE(SameBitsOrNaN(key.GetScale(), D3DXVECTOR3(1, 1, 1)));
}

TEST(Key, MatrixOfADefaultKeyIsTheIdentity)
{
    EXPECT_TRUE(SameBitsOrNaN(Key().GetMatrix(), D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)));
}

TEST(Key, SettersStoreAndCopiesHaveEveryField)
{
    Key original = Filled();
    Key copy(original);
    Key assigned;
    assigned = original;
    for (Key* key : {&original, &copy, &assigned})
    {
        EXPECT_EQ(key->GetTime(), 4000000000U);
        EXPECT_TRUE(SameBitsOrNaN(key->GetPosition(), D3DXVECTOR3(1, 2, 3)));
        EXPECT_TRUE(SameBitsOrNaN(key->GetRotation(), D3DXQUATERNION(4, 5, 6, 7)));
        EXPECT_TRUE(SameBitsOrNaN(key->GetScale(), D3DXVECTOR3(8, 9, 10)));
    }
}

TEST(Key, EveryFieldIsCompared)
{
    const Key original = Filled();
    EXPECT_TRUE(original == Key(original));
    EXPECT_FALSE(original != Key(original));

    Key time = original;
    time.SetTime(1);
    EXPECT_TRUE(original != time);
    for (int i = 0; i < 3; ++i)
    {
        D3DXVECTOR3 position(1, 2, 3);
        (i == 0 ? position.x : i == 1 ? position.y : position.z) += 0.5F;
        Key moved = original;
        moved.SetPosition(position);
        EXPECT_TRUE(original != moved) << i;
        D3DXVECTOR3 scale(8, 9, 10);
        (i == 0 ? scale.x : i == 1 ? scale.y : scale.z) += 0.5F;
        Key scaled = original;
        scaled.SetScale(scale);
        EXPECT_TRUE(original != scaled) << i;
    }
    for (int i = 0; i < 4; ++i)
    {
        D3DXQUATERNION rotation(4, 5, 6, 7);
        (i == 0 ? rotation.x : i == 1 ? rotation.y : i == 2 ? rotation.z : rotation.w) += 0.5F;
        Key turned = original;
        turned.SetRotation(rotation);
        EXPECT_TRUE(original != turned) << i;
    }
}

TEST(Key, ThereIsNoTolerance)
{
    Key key;
    key.SetScale(D3DXVECTOR3(std::nextafter(1.0F, 2.0F), 1, 1));
    EXPECT_TRUE(key != Key());
}

TEST(Key, ZerosOfDifferentSignAreEqual)
{
    Key key;
    key.SetPosition(D3DXVECTOR3(-0.0F, 0, 0));
    EXPECT_TRUE(key == Key());
}

TEST(Key, NaNEqualsNothing)
{
    Key key;
    key.SetPosition(D3DXVECTOR3(std::numeric_limits<float>::quiet_NaN(), 0, 0));
    EXPECT_FALSE(key == Key(key));
    EXPECT_TRUE(key != Key(key));
}

TEST(Key, MatrixScalesThenRotatesThenTranslates)
{
    Key key;
    const float half = std::sqrt(0.5F);
    key.SetPosition(D3DXVECTOR3(10, 20, 30));
    key.SetRotation(D3DXQUATERNION(0, 0, half, half));
    key.SetScale(D3DXVECTOR3(2, 3, 4));
    const D3DXMATRIX expected(0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 10, 20, 30, 1);
    EXPECT_TRUE(Support::NearFloats(key.GetMatrix(), expected, 1e-6F));
}

TEST(Key, MatrixEqualsThatOfD3DXMatrixTransformation)
{
    Support::RandomFloats random(1);
    for (int i = 0; i < 200; ++i)
    {
        const D3DXVECTOR3 scale = random.Vector(3);
        const D3DXQUATERNION rotation = random.Rotation();
        const D3DXVECTOR3 position = random.Vector(10);
        Key key;
        key.SetScale(scale);
        key.SetRotation(rotation);
        key.SetPosition(position);
        D3DXMATRIX expected;
        D3DXMatrixTransformation(&expected, nullptr, nullptr, &scale, nullptr, &rotation, &position);
        ASSERT_TRUE(SameBitsOrNaN(key.GetMatrix(), expected));
    }
}

}  // namespace
