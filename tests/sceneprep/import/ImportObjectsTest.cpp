#include <sceneprep/import/ImportObjects.h>

#include <gtest/gtest.h>
#include <sceneprep/assimp/CameraFrame.h>
#include <support/SceneText.h>

#include <memory>
#include <numbers>

namespace
{

using namespace Sceneprep;
using Importing::SceneContainer;

constexpr float kPi = static_cast<float>(std::numbers::pi);
const NodeNames kNames = {{"Root", 0}, {"A", 1}};

std::unique_ptr<aiScene> SceneWith(aiCamera* camera)
{
    auto source = std::make_unique<aiScene>();
    source->mNumCameras = 1;
    source->mCameras = new aiCamera* [1] { camera };
    return source;
}

std::unique_ptr<aiScene> SceneWith(aiLight* light)
{
    auto source = std::make_unique<aiScene>();
    source->mNumLights = 1;
    source->mLights = new aiLight* [1] { light };
    return source;
}

TEST(ImportCameras, ConvertsFieldsToDegrees)
{
    auto* camera = new aiCamera;
    camera->mName = "A";
    camera->mPosition = {1, 2, 3};
    camera->mLookAt = {0, 0, -2};
    camera->mHorizontalFOV = kPi / 2;
    camera->mAspect = 2;
    camera->mClipPlaneNear = 0.5F;
    camera->mClipPlaneFar = 500;
    SceneContainer scene = Support::Scene("Root( A )");
    ImportCameras(*SceneWith(camera), kNames, scene);
    EXPECT_EQ(scene.NodeLibrary[1].CameraList, (std::vector<std::int32_t>{0}));
    Importing::Camera& imported = scene.CameraLibrary.at(0);
    EXPECT_EQ(imported.GetName(), "A");
    EXPECT_NEAR(imported.GetFovX(), 90, 1e-4F);
    EXPECT_NEAR(imported.GetFovY(), 53.130102F, 1e-4F);
    EXPECT_EQ(imported.GetNearZ(), 0.5F);
    EXPECT_EQ(imported.GetFarZ(), 500);
    const CameraFrame frame = FrameFromOffset(imported.GetOffsetMatrix().GetMatrix());
    EXPECT_EQ(frame.position, D3DXVECTOR3(1, 2, 3));
    EXPECT_EQ(frame.forward, D3DXVECTOR3(0, 0, -1));
}

TEST(ImportCameras, BothFieldsOfViewAreEqualWithoutAnAspectRatio)
{
    SceneContainer scene = Support::Scene("Root( A )");
    ImportCameras(*SceneWith(new aiCamera), kNames, scene);
    EXPECT_EQ(scene.CameraLibrary.at(0).GetFovX(), scene.CameraLibrary.at(0).GetFovY());
}

TEST(ImportCameras, DropsOrthographicCamerasAndReportsThem)
{
    auto* wide = new aiCamera;
    wide->mOrthographicWidth = 3;
    auto* withoutField = new aiCamera;
    withoutField->mHorizontalFOV = 0;
    for (aiCamera* camera : {wide, withoutField})
    {
        SceneContainer scene = Support::Scene("Root( A )");
        EXPECT_EQ(ImportCameras(*SceneWith(camera), kNames, scene).All(),
                  (std::vector<Note>{{"orthographic cameras are dropped (1)", "orthographic-cameras"}}));
        EXPECT_TRUE(scene.CameraLibrary.empty());
        EXPECT_TRUE(scene.NodeLibrary[0].CameraList.empty());
    }
}

TEST(ImportCameras, TheRootReferencesCamerasWithoutANode)
{
    SceneContainer scene = Support::Scene("Root( A )");
    ImportCameras(*SceneWith(new aiCamera), kNames, scene);
    EXPECT_EQ(scene.NodeLibrary[0].CameraList, (std::vector<std::int32_t>{0}));
}

TEST(ImportLights, ConvertsAllFields)
{
    auto* light = new aiLight;
    light->mName = "A";
    light->mType = aiLightSource_SPOT;
    light->mPosition = {1, 2, 3};
    light->mDirection = {0, -1, 0};
    light->mColorDiffuse = {1, 0.5F, 0.25F};
    light->mColorSpecular = {0.1F, 0.2F, 0.3F};
    light->mAttenuationConstant = 1;
    light->mAttenuationLinear = 2;
    light->mAttenuationQuadratic = 3;
    light->mAngleInnerCone = 0.25F;
    light->mAngleOuterCone = 0.5F;
    SceneContainer scene = Support::Scene("Root( A )");
    ImportLights(*SceneWith(light), kNames, scene);
    EXPECT_EQ(scene.NodeLibrary[1].LightList, (std::vector<std::int32_t>{0}));
    Importing::Light& imported = scene.LightLibrary.at(0);
    EXPECT_EQ(imported.GetType(), Importing::Light::LightType::Spot);
    EXPECT_EQ(imported.GetDiffuse(), D3DXCOLOR(1, 0.5F, 0.25F, 1));
    EXPECT_EQ(imported.GetSpecular(), D3DXCOLOR(0.1F, 0.2F, 0.3F, 1));
    EXPECT_EQ(imported.GetAttenuation(), D3DXVECTOR3(1, 2, 3));
    EXPECT_EQ(imported.GetTheta(), 0.25F);
    EXPECT_EQ(imported.GetPhi(), 0.5F);
    EXPECT_EQ(FrameFromOffset(imported.GetOffsetMatrix().GetMatrix()).forward, D3DXVECTOR3(0, -1, 0));
}

TEST(ImportLights, ConvertsTypes)
{
    using Type = Importing::Light::LightType;
    const std::pair<aiLightSourceType, Type> types[] = {{aiLightSource_POINT, Type::Point},
                                                        {aiLightSource_DIRECTIONAL, Type::Directional},
                                                        {aiLightSource_SPOT, Type::Spot},
                                                        {aiLightSource_AMBIENT, Type::Unspecified},
                                                        {aiLightSource_AREA, Type::Unspecified}};
    for (const auto& [source, expected] : types)
    {
        auto* light = new aiLight;
        light->mType = source;
        SceneContainer scene = Support::Scene("Root");
        ImportLights(*SceneWith(light), kNames, scene);
        EXPECT_EQ(scene.LightLibrary.at(0).GetType(), expected);
    }
}

}  // namespace
