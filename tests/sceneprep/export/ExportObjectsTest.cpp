#include <sceneprep/export/ExportObjects.h>

#include <gtest/gtest.h>
#include <sceneprep/assimp/CameraFrame.h>

#include <numbers>

namespace
{

using namespace Sceneprep;

TEST(ExportObjects, ACameraHasTheNameOfItsNodeAndItsOwnPosition)
{
    Importing::Camera camera;
    camera.SetName("Eye");
    camera.SetOffsetMatrix(OffsetFromFrame({{1, 2, 3}, {1, 0, 0}, {0, 1, 0}}));
    camera.SetFovX(90);
    camera.SetFovY(53.130102F);
    camera.SetNearZ(0.5F);
    camera.SetFarZ(500);
    const std::unique_ptr<aiCamera> target = ConvertCamera(camera, "Node");
    EXPECT_STREQ(target->mName.C_Str(), "Node");
    EXPECT_EQ(target->mPosition, aiVector3D(1, 2, 3));
    EXPECT_EQ(target->mLookAt, aiVector3D(1, 0, 0));
    EXPECT_EQ(target->mUp, aiVector3D(0, 1, 0));
    EXPECT_NEAR(target->mHorizontalFOV, static_cast<float>(std::numbers::pi / 2), 1e-6F);
    EXPECT_NEAR(target->mAspect, 2, 1e-5F);
    EXPECT_EQ(target->mClipPlaneNear, 0.5F);
    EXPECT_EQ(target->mClipPlaneFar, 500);
}

TEST(ExportObjects, ALightHasAllFields)
{
    Importing::Light light;
    light.SetType(Importing::Light::LightType::Spot);
    light.SetOffsetMatrix(OffsetFromFrame({{1, 2, 3}, {0, -1, 0}, {0, 0, 1}}));
    light.SetDiffuse({1, 0.5F, 0.25F, 1});
    light.SetAttenuation({1, 2, 3});
    light.SetTheta(0.25F);
    light.SetPhi(0.5F);
    const std::unique_ptr<aiLight> target = ConvertLight(light, "Node");
    EXPECT_STREQ(target->mName.C_Str(), "Node");
    EXPECT_EQ(target->mType, aiLightSource_SPOT);
    EXPECT_EQ(target->mDirection, aiVector3D(0, -1, 0));
    EXPECT_EQ(target->mColorDiffuse, aiColor3D(1, 0.5F, 0.25F));
    EXPECT_EQ(target->mAttenuationQuadratic, 3);
    EXPECT_EQ(target->mAngleInnerCone, 0.25F);
    EXPECT_EQ(target->mAngleOuterCone, 0.5F);
}

TEST(ExportObjects, LightTypesHaveTheirCounterparts)
{
    using Type = Importing::Light::LightType;
    const std::pair<Type, aiLightSourceType> types[] = {{Type::Point, aiLightSource_POINT},
                                                        {Type::Directional, aiLightSource_DIRECTIONAL},
                                                        {Type::Unspecified, aiLightSource_UNDEFINED}};
    for (const auto& [type, expected] : types)
    {
        Importing::Light light;
        light.SetType(type);
        EXPECT_EQ(ConvertLight(light, "")->mType, expected);
    }
}

TEST(ExportObjects, KeysBecomeKeysOfAllThreeChannels)
{
    std::vector<Importing::Key> keys(2);
    keys[1].SetTime(4800);
    keys[1].SetPosition({1, 2, 3});
    keys[1].SetRotation({0, 0, 1, 0});
    keys[1].SetScale({2, 2, 2});
    const std::unique_ptr<aiNodeAnim> target = ConvertAnimation(keys, "Node");
    EXPECT_STREQ(target->mNodeName.C_Str(), "Node");
    ASSERT_EQ(target->mNumPositionKeys, 2U);
    ASSERT_EQ(target->mNumRotationKeys, 2U);
    ASSERT_EQ(target->mNumScalingKeys, 2U);
    EXPECT_EQ(target->mPositionKeys[1].mTime, 4800);
    EXPECT_EQ(target->mPositionKeys[1].mValue, aiVector3D(1, 2, 3));
    EXPECT_EQ(target->mRotationKeys[1].mValue, aiQuaternion(0, 0, 0, 1));
    EXPECT_EQ(target->mScalingKeys[1].mValue, aiVector3D(2, 2, 2));
}

}  // namespace
