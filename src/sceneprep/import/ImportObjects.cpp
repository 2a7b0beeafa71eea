#include <sceneprep/import/ImportObjects.h>

#include <importing/base/CheckedAccess.h>
#include <sceneprep/assimp/CameraFrame.h>
#include <sceneprep/assimp/Conversions.h>

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

/// Horizontal and vertical field of view, in radians.
struct FieldsOfView
{
    float x;
    float y;
};

FieldsOfView FieldsOf(const aiCamera& source)
{
    const float x = source.mHorizontalFOV;
    return {x, source.mAspect > 0 ? OtherFieldOfView(x, 1 / source.mAspect) : x};
}

/// Some importers of Assimp set an orthographic width, others a field of view of 0.
bool IsOrthographic(const aiCamera& source) { return source.mOrthographicWidth > 0 || source.mHorizontalFOV == 0; }

Camera ConvertCamera(const aiCamera& source)
{
    Camera camera;
    camera.SetName(source.mName.C_Str());
    camera.SetOffsetMatrix(OffsetOf(source.mPosition, source.mLookAt, source.mUp));
    const FieldsOfView fields = FieldsOf(source);
    camera.SetFovX(fields.x * kDegreesPerRadian);
    camera.SetFovY(fields.y * kDegreesPerRadian);
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

Notes ImportCameras(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene)
{
    std::size_t orthographic = 0;
    for (unsigned i = 0; i < source.mNumCameras; ++i)
    {
        const aiCamera& camera = *source.mCameras[i];
        if (IsOrthographic(camera))
        {
            ++orthographic;
            continue;
        }
        NodeCalled(camera.mName, nodes, scene).CameraList.push_back(static_cast<int>(scene.CameraLibrary.size()));
        scene.CameraLibrary.push_back(ConvertCamera(camera));
    }
    Notes notes;
    notes.AddLoss("orthographic-cameras", "orthographic cameras are dropped", orthographic);
    return notes;
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
