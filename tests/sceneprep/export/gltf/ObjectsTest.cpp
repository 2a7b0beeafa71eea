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

TEST(GltfObjects, FieldsOfViewAreInRadians)
{
    Camera camera;
    camera.SetName("Eye");
    camera.SetFovX(90);
    camera.SetFovY(53.130102F);
    camera.SetNearZ(0.5F);
    camera.SetFarZ(500);
    const Json target = ConvertCamera(camera);
    EXPECT_EQ(target["name"], "Eye");
    EXPECT_EQ(target["type"], "perspective");
    EXPECT_NEAR(target["perspective"]["yfov"].get<double>(), 53.130102 * std::numbers::pi / 180, 1e-6);
    EXPECT_NEAR(target["perspective"]["aspectRatio"].get<double>(), 2, 1e-5);
    EXPECT_EQ(target["perspective"]["znear"].get<double>(), 0.5);
    EXPECT_EQ(target["perspective"]["zfar"].get<double>(), 500);
}

TEST(GltfObjects, ClippingDistancesOfADefaultCameraAreSwapped)
{
    Camera fresh;
    const Json target = ConvertCamera(fresh);
    EXPECT_FLOAT_EQ(static_cast<float>(target["perspective"]["znear"].get<double>()), 0.1F);
    EXPECT_EQ(target["perspective"]["zfar"].get<double>(), 1000);
}

TEST(GltfObjects, ImpossibleClippingDistancesAndFieldsOfViewAreReplaced)
{
    Camera camera;
    camera.SetFovX(0);
    camera.SetFovY(360);
    camera.SetNearZ(-1);
    camera.SetFarZ(std::numeric_limits<float>::infinity());
    const Json target = ConvertCamera(camera);
    EXPECT_GT(target["perspective"]["yfov"].get<double>(), 0);
    EXPECT_LT(target["perspective"]["yfov"].get<double>(), std::numbers::pi);
    EXPECT_GT(target["perspective"]["aspectRatio"].get<double>(), 0);
    EXPECT_GT(target["perspective"]["znear"].get<double>(), 0);
    EXPECT_GT(target["perspective"]["zfar"].get<double>(), target["perspective"]["znear"].get<double>());
}

TEST(GltfObjects, TheLargestComponentOfALightIsItsIntensity)
{
    Light light;
    light.SetType(Light::LightType::Point);
    light.SetDiffuse({4, 2, 0, 1});
    const Json target = ConvertLight(light).value();
    EXPECT_EQ(target["type"], "point");
    EXPECT_EQ(target["intensity"], 4);
    EXPECT_EQ(target["color"], Json::array({1, 0.5, 0}));
    EXPECT_FALSE(target.contains("range")) << "never set";
}

TEST(GltfObjects, ABlackLightHasNoColour)
{
    Light light;
    light.SetType(Light::LightType::Directional);
    light.SetDiffuse({0, 0, 0, 1});
    const Json target = ConvertLight(light).value();
    EXPECT_EQ(target["intensity"], 0);
    EXPECT_FALSE(target.contains("color"));
}

TEST(GltfObjects, ASpotLightHasAConeAndARange)
{
    Light light;
    light.SetType(Light::LightType::Spot);
    light.SetTheta(0.25F);
    light.SetPhi(0.5F);
    light.SetRange(20);
    const Json target = ConvertLight(light).value();
    EXPECT_EQ(target["type"], "spot");
    EXPECT_EQ(target["spot"]["innerConeAngle"].get<double>(), 0.25);
    EXPECT_EQ(target["spot"]["outerConeAngle"].get<double>(), 0.5);
    EXPECT_EQ(target["range"], 20);
}

TEST(GltfObjects, TheConeOfADefaultLightIsARightAngle)
{
    Light light;
    light.SetType(Light::LightType::Spot);
    const Json target = ConvertLight(light).value();
    EXPECT_DOUBLE_EQ(target["spot"]["outerConeAngle"].get<double>(), std::numbers::pi / 2);
    EXPECT_LT(target["spot"]["innerConeAngle"].get<double>(), target["spot"]["outerConeAngle"].get<double>());
}

TEST(GltfObjects, InfiniteAndNanValuesAreReplaced)
{
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    Camera camera;
    camera.SetFovX(kNone);
    camera.SetFovY(kInfinity);
    camera.SetNearZ(kInfinity);
    camera.SetFarZ(kNone);
    const Json written = ConvertCamera(camera)["perspective"];
    for (const auto& value : written.items())
        EXPECT_GT(value.value().get<double>(), 0) << value.key();
    EXPECT_GT(written["zfar"].get<double>(), written["znear"].get<double>());

    Light light;
    light.SetType(Light::LightType::Spot);
    light.SetDiffuse({kNone, 2, kInfinity, 1});
    light.SetTheta(kNone);
    light.SetPhi(kInfinity);
    light.SetRange(kInfinity);
    const Json spot = ConvertLight(light).value();
    EXPECT_EQ(spot["intensity"], 2);
    EXPECT_EQ(spot["color"], Json::array({0, 1, 0}));
    for (const auto& angle : spot["spot"].items())
        EXPECT_TRUE(std::isfinite(angle.value().get<double>())) << angle.key();
    EXPECT_FALSE(spot.contains("range"));
}

TEST(GltfObjects, ALightWithoutATypeIsDropped)
{
    Light light;
    EXPECT_FALSE(ConvertLight(light));
}

TEST(GltfObjects, ACameraThatLooksAlongMinusZNeedsNoTransform)
{
    const Importing::Transform backwards(OffsetFromFrame({{0, 0, 0}, {0, 0, -1}, {0, 1, 0}}));
    Json node = Json::object();
    SetMatrix(PlacementOf(backwards), node);
    EXPECT_TRUE(node.empty());
}

TEST(GltfObjects, ACameraWithoutOffsetIsRotatedByHalfATurn)
{
    const D3DXMATRIX placement = PlacementOf(Importing::Transform());
    EXPECT_EQ(placement._11, -1);
    EXPECT_EQ(placement._22, 1);
    EXPECT_EQ(placement._33, -1);
}

TEST(GltfObjects, ScaleIsNotPartOfATransform)
{
    D3DXMATRIX large;
    D3DXMatrixScaling(&large, 3, 3, 3);
    large._41 = 7;
    const D3DXMATRIX placement = PlacementOf(Importing::Transform(large));
    EXPECT_EQ(placement._22, 1);
    EXPECT_EQ(placement._41, 7);
}

}  // namespace
