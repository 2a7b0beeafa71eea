#include <sceneprep/ImportObjects.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/CameraFrame.h>
#include <sceneprep/Conversions.h>

#include <numbers>

namespace Sceneprep
{

namespace
{

using Importing::Camera;
using Importing::Light;

constexpr float kDegreesPerRadian = static_cast<float>(180 / std::numbers::pi);

Importing::Node& NodeCalled(const aiString& name, const NodeNames& nodes, Importing::SceneContainer& scene)
{
    const auto found = nodes.find(name.C_Str());
    return Importing::At(scene.NodeLibrary, found == nodes.end() ? scene.GetRootNodeIndex() : found->second);
}

Importing::Transform OffsetOf(const aiVector3D& position, const aiVector3D& forward, const aiVector3D& up)
{
    return Importing::Transform(OffsetFromFrame({ToVector(position), ToVector(forward), ToVector(up)}));
}

Camera ConvertCamera(const aiCamera& source)
{
    Camera camera;
    camera.SetName(source.mName.C_Str());
    camera.SetOffsetMatrix(OffsetOf(source.mPosition, source.mLookAt, source.mUp));
    const float fovY =
        source.mAspect > 0 ? OtherFieldOfView(source.mHorizontalFOV, 1 / source.mAspect) : source.mHorizontalFOV;
    camera.SetFovX(source.mHorizontalFOV * kDegreesPerRadian);
    camera.SetFovY(fovY * kDegreesPerRadian);
    camera.SetNearZ(source.mClipPlaneNear);
    camera.SetFarZ(source.mClipPlaneFar);
    return camera;
}

Light::LightType ConvertType(aiLightSourceType type)
{
    switch (type)
    {
        case aiLightSource_POINT:
            return Light::LightType::Point;
        case aiLightSource_SPOT:
            return Light::LightType::Spot;
        case aiLightSource_DIRECTIONAL:
            return Light::LightType::Directional;
        default:
            return Light::LightType::Unspecified;
    }
}

Light ConvertLight(const aiLight& source)
{
    Light light;
    light.SetName(source.mName.C_Str());
    light.SetType(ConvertType(source.mType));
    light.SetOffsetMatrix(OffsetOf(source.mPosition, source.mDirection, source.mUp));
    light.SetDiffuse(ToColor(source.mColorDiffuse));
    light.SetAmbient(ToColor(source.mColorAmbient));
    light.SetSpecular(ToColor(source.mColorSpecular));
    light.SetAttenuation({source.mAttenuationConstant, source.mAttenuationLinear, source.mAttenuationQuadratic});
    if (source.mType == aiLightSource_SPOT)
    {
        light.SetTheta(source.mAngleInnerCone);
        light.SetPhi(source.mAngleOuterCone);
    }
    return light;
}

}  // namespace

void ImportCameras(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene)
{
    for (unsigned i = 0; i < source.mNumCameras; ++i)
    {
        const aiCamera& camera = *source.mCameras[i];
        NodeCalled(camera.mName, nodes, scene).CameraList.push_back(static_cast<int>(scene.CameraLibrary.size()));
        scene.CameraLibrary.push_back(ConvertCamera(camera));
    }
}

void ImportLights(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene)
{
    for (unsigned i = 0; i < source.mNumLights; ++i)
    {
        const aiLight& light = *source.mLights[i];
        NodeCalled(light.mName, nodes, scene).LightList.push_back(static_cast<int>(scene.LightLibrary.size()));
        scene.LightLibrary.push_back(ConvertLight(light));
    }
}

}  // namespace Sceneprep
