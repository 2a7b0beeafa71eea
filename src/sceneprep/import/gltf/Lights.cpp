#include <sceneprep/import/gltf/Lights.h>

#include <fmt/format.h>
#include <sceneprep/assimp/CameraFrame.h>

#include <array>
#include <numbers>

namespace Sceneprep::GltfImport
{

namespace
{

using Importing::Light;

Light::LightType TypeOf(const Field& light)
{
    const std::string& type = light.Member("type").Text();
    if (type == "point")
        return Light::LightType::Point;
    if (type == "spot")
        return Light::LightType::Spot;
    if (type != "directional")
        light.Member("type").Fail(fmt::format("'{}' is not a type of lights", type));
    return Light::LightType::Directional;
}

D3DXCOLOR ColorOf(const Field& light)
{
    std::array<double, 3> color = {1, 1, 1};
    light.NumbersIfAny("color", color);
    const double intensity = light.NumberOr("intensity", 1);
    return {static_cast<float>(color[0] * intensity), static_cast<float>(color[1] * intensity),
            static_cast<float>(color[2] * intensity), 1};
}

void SetCone(const Field& source, Light& light)
{
    const std::optional<Field> spot = source.Find("spot");
    light.SetTheta(static_cast<float>(spot ? spot->NumberOr("innerConeAngle", 0) : 0));
    constexpr double kOuter = std::numbers::pi / 4;
    light.SetPhi(static_cast<float>(spot ? spot->NumberOr("outerConeAngle", kOuter) : kOuter));
}

}  // namespace

Light ConvertLight(const Field& source)
{
    Light light;
    light.SetName(source.TextOr("name", ""));
    light.SetType(TypeOf(source));
    const bool hasDirection = light.GetType() != Light::LightType::Point;
    light.SetOffsetMatrix(Importing::Transform(hasDirection ? OffsetFromFrame({{0, 0, 0}, {0, 0, -1}, {0, 1, 0}})
                                                            : Importing::Transform::Indentity));
    const D3DXCOLOR color = ColorOf(source);
    light.SetDiffuse(color);
    light.SetAmbient(color);
    light.SetSpecular(color);
    const bool spreads = light.GetType() != Light::LightType::Directional;
    light.SetAttenuation(spreads ? D3DXVECTOR3(0, 0, 1) : D3DXVECTOR3(1, 0, 0));
    if (light.GetType() == Light::LightType::Spot)
        SetCone(source, light);
    if (source.Has("range"))
        light.SetRange(static_cast<float>(source.Member("range").Number()));
    return light;
}

}  // namespace Sceneprep::GltfImport
