#include <sceneprep/export/gltf/Objects.h>

#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/export/gltf/Finite.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::Light;

constexpr double kRadiansPerDegree = std::numbers::pi / 180;
constexpr double kNearest = 1e-4;
constexpr double kFarAway = 1e6;

double HalfTangent(float degrees)
{
    constexpr double kWidest = 179;
    constexpr float kUsual = 45;
    const double field = std::clamp(static_cast<double>(Finite(degrees, kUsual)), kNearest, kWidest);
    return std::tan(field * kRadiansPerDegree / 2);
}

const char* TypeOf(Light::LightType type)
{
    switch (type)
    {
        case Light::LightType::Point:
            return "point";
        case Light::LightType::Spot:
            return "spot";
        case Light::LightType::Directional:
            return "directional";
        case Light::LightType::Unspecified:
            break;
    }
    return nullptr;
}

void SetColor(const D3DXCOLOR& color, Json& target)
{
    const D3DXVECTOR3 parts = Finite(D3DXVECTOR3(color.r, color.g, color.b), 0);
    const double brightest = std::max({parts.x, parts.y, parts.z, 0.0F});
    target["intensity"] = brightest;
    if (brightest == 0)
        return;
    for (const float part : {parts.x, parts.y, parts.z})
        target["color"].push_back(std::clamp(static_cast<double>(part) / brightest, 0.0, 1.0));
}

/// The inner angle has to be the smaller one.
Json ConvertCone(float inner, float outer)
{
    constexpr double kQuarter = std::numbers::pi / 2;
    constexpr float kWidest = 2;
    const double outerAngle = std::clamp(static_cast<double>(Finite(outer, kWidest)), kNearest, kQuarter);
    const double innerAngle = std::clamp(static_cast<double>(Finite(inner, 0)), 0.0, outerAngle * (1 - kNearest));
    return {{"innerConeAngle", innerAngle}, {"outerConeAngle", outerAngle}};
}

/// Returns an object with the name, or without one where it is empty.
Json Named(const std::string& name)
{
    Json target = Json::object();
    if (!name.empty())
        target["name"] = name;
    return target;
}

}  // namespace

Json ConvertCamera(Importing::Camera& camera)
{
    const float first = Finite(camera.GetNearZ(), 0);
    const float second = Finite(camera.GetFarZ(), first);
    const double smaller = std::min(first, second);
    const double larger = std::max(first, second);
    const double nearZ = smaller > 0 ? smaller : kNearest;
    const double across = HalfTangent(camera.GetFovX());
    const double up = HalfTangent(camera.GetFovY());

    Json target = Named(camera.GetName());
    target["type"] = "perspective";
    target["perspective"] = {{"aspectRatio", across / up},
                             {"yfov", 2 * std::atan(up)},
                             {"znear", nearZ},
                             {"zfar", larger > nearZ ? larger : nearZ * kFarAway}};
    return target;
}

std::optional<Json> ConvertLight(Light& light)
{
    const char* type = TypeOf(light.GetType());
    if (type == nullptr)
        return std::nullopt;
    Json target = Named(light.GetName());
    target["type"] = type;
    SetColor(light.GetDiffuse(), target);
    if (light.GetType() == Light::LightType::Spot)
        target["spot"] = ConvertCone(light.GetTheta(), light.GetPhi());
    const bool isRangeSet =
        light.GetRange() > 0 && std::isfinite(light.GetRange()) && light.GetRange() != Light().GetRange();
    if (isRangeSet && light.GetType() != Light::LightType::Directional)
        target["range"] = static_cast<double>(light.GetRange());
    return target;
}

D3DXMATRIX PlacementOf(const Importing::Transform& offset)
{
    const D3DXMATRIX halfTurn(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1);
    const D3DXMATRIX frame = OffsetFromFrame(FrameFromOffset(Importing::Transform(offset).GetMatrix()));
    return Pipeline::Product(halfTurn, frame);
}

}  // namespace Sceneprep::Gltf
