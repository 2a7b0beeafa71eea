#pragma once

#include <importing/math/D3DXMath.h>
#include <importing/records/Camera.h>
#include <importing/records/Light.h>
#include <sceneprep/export/gltf/TinyGltf.h>

#include <optional>

namespace Sceneprep::Gltf
{

/// Fields of view come from degrees, one becomes the ratio of the sides. The nearer of the two clipping planes is the
/// near one, whatever the camera calls it; planes that are not in front of it are moved there.
tinygltf::Camera ConvertCamera(Importing::Camera& camera);

/// A light of KHR_lights_punctual: the brightest part of the diffuse colour is the intensity. Cone angles are those of
/// spot lights, at most a quarter turn. A range that was never set is left out.
/// @return none for a light without a kind.
std::optional<tinygltf::Light> ConvertLight(Importing::Light& light);

/// @return the placement in the node of a camera or light with the given offset, a rotation and a translation. In the
///         file they look along -z, in the scene along +z.
D3DXMATRIX PlacementOf(const Importing::Transform& offset);

}  // namespace Sceneprep::Gltf
