#include <sceneprep/export/gltf/Objects.h>

#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/export/gltf/Finite.h>
#include <sceneprep/export/gltf/Utf8.h>

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

void SetColor(const D3DXCOLOR& color, tinygltf::Light& target)
{
    const D3DXVECTOR3 parts = Finite(D3DXVECTOR3(color.r, color.g, color.b), 0);
    const double brightest = std::max({parts.x, parts.y, parts.z, 0.0F});
    target.intensity = brightest;
    if (brightest == 0)
        return;
    for (const float part : {parts.x, parts.y, parts.z})
        target.color.push_back(std::clamp(static_cast<double>(part) / brightest, 0.0, 1.0));
}

/// The inner angle has to be the smaller one.
void SetCone(float inner, float outer, tinygltf::Light& target)
{
    constexpr double kQuarter = std::numbers::pi / 2;
    constexpr float kWidest = 2;
    target.spot.outerConeAngle = std::clamp(static_cast<double>(Finite(outer, kWidest)), kNearest, kQuarter);
    target.spot.innerConeAngle =
        std::clamp(static_cast<double>(Finite(inner, 0)), 0.0, target.spot.outerConeAngle * (1 - kNearest));
}

}  // namespace

tinygltf::Camera ConvertCamera(Importing::Camera& camera)
{
    const float first = Finite(camera.GetNearZ(), 0);
    const float second = Finite(camera.GetFarZ(), first);
    const double nearZ = std::min(first, second);
    const double farZ = std::max(first, second);
    const double across = HalfTangent(camera.GetFovX());
    const double up = HalfTangent(camera.GetFovY());

    tinygltf::Camera target;
    target.name = ToUtf8(camera.GetName());
    target.type = "perspective";
    target.perspective.yfov = 2 * std::atan(up);
    target.perspective.aspectRatio = across / up;
    target.perspective.znear = nearZ > 0 ? nearZ : kNearest;
    const bool isFarUsable = farZ > target.perspective.znear;
    target.perspective.zfar = isFarUsable ? farZ : target.perspective.znear * kFarAway;
    return target;
}

std::optional<tinygltf::Light> ConvertLight(Light& light)
{
    const char* type = TypeOf(light.GetType());
    if (type == nullptr)
        return std::nullopt;
    tinygltf::Light target;
    target.name = ToUtf8(light.GetName());
    target.type = type;
    SetColor(light.GetDiffuse(), target);
    if (light.GetType() == Light::LightType::Spot)
        SetCone(light.GetTheta(), light.GetPhi(), target);
    const bool isRangeSet =
        light.GetRange() > 0 && std::isfinite(light.GetRange()) && light.GetRange() != Light().GetRange();
    if (isRangeSet && light.GetType() != Light::LightType::Directional)
        target.range = static_cast<double>(light.GetRange());
    return target;
}

D3DXMATRIX PlacementOf(const Importing::Transform& offset)
{
    const D3DXMATRIX halfTurn(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1);
    const D3DXMATRIX frame = OffsetFromFrame(FrameFromOffset(Importing::Transform(offset).GetMatrix()));
    D3DXMATRIX placement;
    return *D3DXMatrixMultiply(&placement, &halfTurn, &frame);
}

}  // namespace Sceneprep::Gltf
