#include <sceneprep/export/ExportObjects.h>

#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/assimp/Conversions.h>

#include <cmath>
#include <numbers>

namespace Sceneprep
{

namespace
{

using Importing::Light;

constexpr float kRadiansPerDegree = static_cast<float>(std::numbers::pi / 180);

aiLightSourceType ConvertType(Light::LightType type)
{
    switch (type)
    {
        case Light::LightType::Point:
            return aiLightSource_POINT;
        case Light::LightType::Spot:
            return aiLightSource_SPOT;
        case Light::LightType::Directional:
            return aiLightSource_DIRECTIONAL;
        case Light::LightType::Unspecified:
            break;
    }
    return aiLightSource_UNDEFINED;
}

}  // namespace

std::unique_ptr<aiCamera> ConvertCamera(Importing::Camera& camera, const std::string& nodeName)
{
    const CameraFrame frame = FrameFromOffset(camera.GetOffsetMatrix().GetMatrix());
    const float fovX = camera.GetFovX() * kRadiansPerDegree;
    const float fovY = camera.GetFovY() * kRadiansPerDegree;
    auto target = std::make_unique<aiCamera>();
    target->mName = nodeName;
    target->mPosition = FromVector(frame.position);
    target->mLookAt = FromVector(frame.forward);
    target->mUp = FromVector(frame.up);
    target->mHorizontalFOV = fovX;
    target->mAspect = std::tan(fovX / 2) / std::tan(fovY / 2);
    target->mClipPlaneNear = camera.GetNearZ();
    target->mClipPlaneFar = camera.GetFarZ();
    return target;
}

std::unique_ptr<aiLight> ConvertLight(Light& light, const std::string& nodeName)
{
    const CameraFrame frame = FrameFromOffset(light.GetOffsetMatrix().GetMatrix());
    const D3DXVECTOR3 attenuation = light.GetAttenuation();
    auto target = std::make_unique<aiLight>();
    target->mName = nodeName;
    target->mType = ConvertType(light.GetType());
    target->mPosition = FromVector(frame.position);
    target->mDirection = FromVector(frame.forward);
    target->mUp = FromVector(frame.up);
    target->mColorDiffuse = FromColor(light.GetDiffuse());
    target->mColorAmbient = FromColor(light.GetAmbient());
    target->mColorSpecular = FromColor(light.GetSpecular());
    target->mAttenuationConstant = attenuation.x;
    target->mAttenuationLinear = attenuation.y;
    target->mAttenuationQuadratic = attenuation.z;
    if (light.GetType() == Light::LightType::Spot)
    {
        target->mAngleInnerCone = light.GetTheta();
        target->mAngleOuterCone = light.GetPhi();
    }
    return target;
}

std::unique_ptr<aiNodeAnim> ConvertAnimation(std::vector<Importing::Key>& keys, const std::string& nodeName)
{
    auto target = std::make_unique<aiNodeAnim>();
    const auto count = static_cast<unsigned>(keys.size());
    target->mNodeName = nodeName;
    target->mPositionKeys = new aiVectorKey[count];
    target->mRotationKeys = new aiQuatKey[count];
    target->mScalingKeys = new aiVectorKey[count];
    target->mNumPositionKeys = target->mNumRotationKeys = target->mNumScalingKeys = count;
    for (unsigned k = 0; k < count; ++k)
    {
        const double time = keys[k].GetTime();
        target->mPositionKeys[k] = {time, FromVector(keys[k].GetPosition())};
        target->mRotationKeys[k] = {time, FromQuaternion(keys[k].GetRotation())};
        target->mScalingKeys[k] = {time, FromVector(keys[k].GetScale())};
    }
    return target;
}

}  // namespace Sceneprep
