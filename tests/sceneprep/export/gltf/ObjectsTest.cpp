#include <sceneprep/export/gltf/Objects.h>

#include <gtest/gtest.h>
#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/export/gltf/Placement.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using Importing::Camera;
using Importing::Light;

TEST(GltfObjects, ACameraHasItsFieldsOfViewInRadians)
{
    Camera camera;
    camera.SetName("Eye");
    camera.SetFovX(90);
    camera.SetFovY(53.130102F);
    camera.SetNearZ(0.5F);
    camera.SetFarZ(500);
    const tinygltf::Camera target = ConvertCamera(camera);
    EXPECT_EQ(target.name, "Eye");
    EXPECT_EQ(target.type, "perspective");
    EXPECT_NEAR(target.perspective.yfov, 53.130102 * std::numbers::pi / 180, 1e-6);
    EXPECT_NEAR(target.perspective.aspectRatio, 2, 1e-5);
    EXPECT_EQ(target.perspective.znear, 0.5);
    EXPECT_EQ(target.perspective.zfar, 500);
}

TEST(GltfObjects, ThePlanesOfAFreshCameraAreTurnedRound)
{
    Camera fresh;
    const tinygltf::Camera target = ConvertCamera(fresh);
    EXPECT_FLOAT_EQ(static_cast<float>(target.perspective.znear), 0.1F);
    EXPECT_EQ(target.perspective.zfar, 1000);
}

TEST(GltfObjects, PlanesAndFieldsThatNoPictureHasAreMended)
{
    Camera camera;
    camera.SetFovX(0);
    camera.SetFovY(360);
    camera.SetNearZ(-1);
    camera.SetFarZ(std::numeric_limits<float>::infinity());
    const tinygltf::Camera target = ConvertCamera(camera);
    EXPECT_GT(target.perspective.yfov, 0);
    EXPECT_LT(target.perspective.yfov, std::numbers::pi);
    EXPECT_GT(target.perspective.aspectRatio, 0);
    EXPECT_GT(target.perspective.znear, 0);
    EXPECT_GT(target.perspective.zfar, target.perspective.znear);
}

TEST(GltfObjects, TheBrightestPartOfALightIsItsIntensity)
{
    Light light;
    light.SetType(Light::LightType::Point);
    light.SetDiffuse({4, 2, 0, 1});
    const tinygltf::Light target = ConvertLight(light).value();
    EXPECT_EQ(target.type, "point");
    EXPECT_EQ(target.intensity, 4);
    EXPECT_EQ(target.color, (std::vector<double>{1, 0.5, 0}));
    EXPECT_EQ(target.range, 0) << "never set";
}

TEST(GltfObjects, ADarkLightHasNoColour)
{
    Light light;
    light.SetType(Light::LightType::Directional);
    light.SetDiffuse({0, 0, 0, 1});
    const tinygltf::Light target = ConvertLight(light).value();
    EXPECT_EQ(target.intensity, 0);
    EXPECT_TRUE(target.color.empty());
}

TEST(GltfObjects, ASpotLightHasAConeAndARange)
{
    Light light;
    light.SetType(Light::LightType::Spot);
    light.SetTheta(0.25F);
    light.SetPhi(0.5F);
    light.SetRange(20);
    const tinygltf::Light target = ConvertLight(light).value();
    EXPECT_EQ(target.type, "spot");
    EXPECT_EQ(target.spot.innerConeAngle, 0.25);
    EXPECT_EQ(target.spot.outerConeAngle, 0.5);
    EXPECT_EQ(target.range, 20);
}

TEST(GltfObjects, TheConeOfAFreshLightIsAQuarterTurn)
{
    Light light;
    light.SetType(Light::LightType::Spot);
    const tinygltf::Light target = ConvertLight(light).value();
    EXPECT_DOUBLE_EQ(target.spot.outerConeAngle, std::numbers::pi / 2);
    EXPECT_LT(target.spot.innerConeAngle, target.spot.outerConeAngle);
}

TEST(GltfObjects, NothingThatIsNoFiniteNumberIsWritten)
{
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    Camera camera;
    camera.SetFovX(kNone);
    camera.SetFovY(kInfinity);
    camera.SetNearZ(kInfinity);
    camera.SetFarZ(kNone);
    const tinygltf::PerspectiveCamera written = ConvertCamera(camera).perspective;
    for (const double value : {written.aspectRatio, written.yfov, written.znear, written.zfar})
        EXPECT_TRUE(std::isfinite(value) && value > 0);
    EXPECT_GT(written.zfar, written.znear);

    Light light;
    light.SetType(Light::LightType::Spot);
    light.SetDiffuse({kNone, 2, kInfinity, 1});
    light.SetTheta(kNone);
    light.SetPhi(kInfinity);
    light.SetRange(kInfinity);
    const tinygltf::Light spot = ConvertLight(light).value();
    EXPECT_EQ(spot.intensity, 2);
    EXPECT_EQ(spot.color, (std::vector<double>{0, 1, 0}));
    EXPECT_TRUE(std::isfinite(spot.spot.innerConeAngle) && std::isfinite(spot.spot.outerConeAngle));
    EXPECT_EQ(spot.range, 0);
}

TEST(GltfObjects, ALightWithoutAKindIsNone)
{
    Light light;
    EXPECT_FALSE(ConvertLight(light));
}

TEST(GltfObjects, WhatLooksTheFormatsWayStandsAtItsNode)
{
    const Importing::Transform backwards(OffsetFromFrame({{0, 0, 0}, {0, 0, -1}, {0, 1, 0}}));
    tinygltf::Node node;
    SetMatrix(PlacementOf(backwards), node);
    EXPECT_TRUE(node.matrix.empty());
}

TEST(GltfObjects, AnUnmovedCameraIsTurnedByHalf)
{
    const D3DXMATRIX placement = PlacementOf(Importing::Transform());
    EXPECT_EQ(placement._11, -1);
    EXPECT_EQ(placement._22, 1);
    EXPECT_EQ(placement._33, -1);
}

TEST(GltfObjects, ScaleIsNoPartOfAPlacement)
{
    D3DXMATRIX large;
    D3DXMatrixScaling(&large, 3, 3, 3);
    large._41 = 7;
    const D3DXMATRIX placement = PlacementOf(Importing::Transform(large));
    EXPECT_EQ(placement._22, 1);
    EXPECT_EQ(placement._41, 7);
}

}  // namespace
