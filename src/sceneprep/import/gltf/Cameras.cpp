#include <sceneprep/import/gltf/Cameras.h>

#include <fmt/format.h>
#include <sceneprep/assimp/CameraFrame.h>

#include <cmath>
#include <numbers>

namespace Sceneprep::GltfImport
{

namespace
{

constexpr double kDegreesPerRadian = 180 / std::numbers::pi;
constexpr double kFarAway = 1e6;

void SetPerspective(const Field& perspective, Importing::Camera& camera)
{
    const double y = perspective.Member("yfov").Number();
    const double aspect = perspective.NumberOr("aspectRatio", 1);
    const double x = 2 * std::atan(std::tan(y / 2) * aspect);
    camera.SetFovX(static_cast<float>(x * kDegreesPerRadian));
    camera.SetFovY(static_cast<float>(y * kDegreesPerRadian));
    const double near = perspective.Member("znear").Number();
    camera.SetNearZ(static_cast<float>(near));
    camera.SetFarZ(static_cast<float>(perspective.NumberOr("zfar", near * kFarAway)));
}

}  // namespace

Importing::Camera ConvertCamera(const Field& source)
{
    Importing::Camera camera;
    camera.SetName(source.TextOr("name", ""));
    camera.SetOffsetMatrix(Importing::Transform(OffsetFromFrame({{0, 0, 0}, {0, 0, -1}, {0, 1, 0}})));
    const std::string& type = source.Member("type").Text();
    if (type == "perspective")
        SetPerspective(source.Member("perspective"), camera);
    else if (type == "orthographic")
    {
        const Field orthographic = source.Member("orthographic");
        camera.SetNearZ(static_cast<float>(orthographic.Member("znear").Number()));
        camera.SetFarZ(static_cast<float>(orthographic.Member("zfar").Number()));
    }
    else
        source.Member("type").Fail(fmt::format("'{}' is neither perspective nor orthographic", type));
    return camera;
}

}  // namespace Sceneprep::GltfImport
