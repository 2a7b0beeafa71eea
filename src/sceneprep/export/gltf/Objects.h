#pragma once

#include <importing/math/D3DXMath.h>
#include <importing/records/Camera.h>
#include <importing/records/Light.h>
#include <sceneprep/model/Json.h>

#include <optional>

namespace Sceneprep::Gltf
{

/// Converts a camera. The ratio of the two fields of view, which are in degrees, becomes the aspect ratio. The smaller
/// of the two clipping distances is the near one, regardless of which the camera calls near; distances that are not
/// positive are replaced.
Json ConvertCamera(Importing::Camera& camera);

/// Converts a light for KHR_lights_punctual: the largest component of the diffuse colour is the intensity. Cone angles
/// are those of spot lights, at most a right angle. A range that was never set is omitted.
/// Returns nothing for a light without a type.
std::optional<Json> ConvertLight(Importing::Light& light);

/// Returns the local matrix, a rotation and a translation, of a node for a camera or light with the given offset. In
/// the file they look along -z, in the scene along +z.
D3DXMATRIX PlacementOf(const Importing::Transform& offset);

}  // namespace Sceneprep::Gltf
