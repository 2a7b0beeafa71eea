#include <importing/records/Camera.h>

#include <math/FloatBits.h>
#include <records/HashModel.h>
#include <records/Watched.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

namespace
{

using Importing::Camera;
using Importing::Transform;
using Support::Change;
using Support::HashModel;
using Support::SameBitsOrNaN;

Transform Moved(float x) { return Transform(D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 0, 0, 1)); }

Camera Filled()
{
    Camera camera;
    camera.SetName("front");
    camera.SetOffsetMatrix(Moved(5));
    camera.SetFovX(60);
    camera.SetFovY(50);
    camera.SetNearZ(0.5F);
    camera.SetFarZ(400);
    return camera;
}

TEST(Camera, Defaults)
{
    Camera camera;
    EXPECT_EQ(camera.GetName(), "");
    EXPECT_EQ(camera.GetOffsetMatrix().GetType(), Transform::Type::Matrix);
    EXPECT_TRUE(SameBitsOrNaN(camera.GetOffsetMatrix().GetMatrix(), Transform::Indentity));
    EXPECT_EQ(camera.GetFovX(), 45.0F);
    EXPECT_EQ(camera.GetFovY(), 45.0F);
    EXPECT_FALSE(camera.GetIsHashCodeValid());
}

TEST(Camera, DefaultNearPlaneIsBeyondTheFarPlane)
{
    const Camera camera;
    EXPECT_EQ(camera.GetNearZ(), 1000.0F);
    EXPECT_EQ(camera.GetFarZ(), 0.1F);
}

TEST(Camera, SettersStore)
{
    Camera camera = Filled();
    EXPECT_EQ(camera.GetName(), "front");
    EXPECT_TRUE(SameBitsOrNaN(camera.GetOffsetMatrix().GetMatrix(), Moved(5).GetMatrix()));
    EXPECT_EQ(camera.GetFovX(), 60.0F);
    EXPECT_EQ(camera.GetFovY(), 50.0F);
    EXPECT_EQ(camera.GetNearZ(), 0.5F);
    EXPECT_EQ(camera.GetFarZ(), 400.0F);
}

TEST(Camera, CopiesHaveEveryField)
{
    Camera original = Filled();
    Support::ExpectCopiesCarryTheHash(original);
    Camera copy(original);
    Camera assigned;
    assigned = original;
    for (Camera* camera : {&copy, &assigned})
    {
        EXPECT_EQ(camera->GetName(), "front");
        EXPECT_TRUE(SameBitsOrNaN(camera->GetOffsetMatrix().GetMatrix(), Moved(5).GetMatrix()));
        EXPECT_EQ(camera->GetFovX(), 60.0F);
        EXPECT_EQ(camera->GetFovY(), 50.0F);
        EXPECT_EQ(camera->GetNearZ(), 0.5F);
        EXPECT_EQ(camera->GetFarZ(), 400.0F);
    }
}

TEST(Camera, EverySetterChangesTheHash)
{
    Support::ExpectHashed<Camera>(Filled(), {{"name", [](Camera& c) { c.SetName("back"); }},
                                             {"offset", [](Camera& c) { c.SetOffsetMatrix(Moved(6)); }},
                                             {"FovX", [](Camera& c) { c.SetFovX(61); }},
                                             {"FovY", [](Camera& c) { c.SetFovY(51); }},
                                             {"NearZ", [](Camera& c) { c.SetNearZ(0.6F); }},
                                             {"FarZ", [](Camera& c) { c.SetFarZ(401); }}});
}

TEST(Camera, NearlyEqualNumbersHashAlike)
{
    Support::ExpectSameHash<Camera>(Filled(), {{"FovX", [](Camera& c) { c.SetFovX(std::nextafter(60.0F, 99.0F)); }},
                                               {"FovY", [](Camera& c) { c.SetFovY(std::nextafter(50.0F, 99.0F)); }},
                                               {"NearZ", [](Camera& c) { c.SetNearZ(std::nextafter(0.5F, 9.0F)); }},
                                               {"FarZ", [](Camera& c) { c.SetFarZ(std::nextafter(400.0F, 999.0F)); }}});
}

TEST(Camera, OffsetIsHashedUnmasked)
{
    Support::ExpectHashed<Camera>(
        Filled(), {{"offset", [](Camera& c) { c.SetOffsetMatrix(Moved(std::nextafter(5.0F, 9.0F))); }}});
}

TEST(Camera, SameTransformInAnotherFormChangesTheHash)
{
    Camera camera;
    const std::uint32_t asMatrix = camera.GetHash();
    D3DXVECTOR3 translation(0, 0, 0);
    Transform euler;
    euler.SetEuler(translation, D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1));
    ASSERT_TRUE(SameBitsOrNaN(euler.GetMatrix(), camera.GetOffsetMatrix().GetMatrix()));
    camera.SetOffsetMatrix(euler);
    EXPECT_NE(camera.GetHash(), asMatrix);
    EXPECT_EQ(camera.GetOffsetMatrix().GetType(), Transform::Type::Euler);
}

TEST(Camera, HashFoldsTheFieldsInTheirOrder)
{
    Camera camera = Filled();
    EXPECT_EQ(camera.GetHash(),
              HashModel().Text("front").Floats({60, 50}).Placement(Moved(5)).Floats({0.5F, 400}).Fold());
}

TEST(Camera, SettersInvalidateTheHashThroughTheVirtualTable)
{
    Support::Watched<Camera> camera;
    camera.SetName("a");
    camera.SetOffsetMatrix(Importing::Transform());
    camera.SetFovX(1);
    camera.SetFovY(1);
    camera.SetNearZ(1);
    camera.SetFarZ(2);
    EXPECT_EQ(camera.changes, 6);
}

TEST(Camera, FloatsThatTheFormDoesNotUseAreHashed)
{
    D3DXMATRIX other;
    D3DXMatrixScaling(&other, 2, 2, 2);
    other._44 = 3;
    Importing::Transform fresh;
    Importing::Transform reused(other);
    D3DXVECTOR3 translation(1, 2, 3);
    D3DXVECTOR3 rotation(0, 0, 0);
    D3DXVECTOR3 scale(1, 1, 1);
    for (Importing::Transform* transform : {&fresh, &reused})
        transform->SetEuler(translation, rotation, scale);
    Camera first;
    Camera second;
    first.SetOffsetMatrix(fresh);
    second.SetOffsetMatrix(reused);
    EXPECT_NE(first.GetHash(), second.GetHash());
}

}  // namespace
