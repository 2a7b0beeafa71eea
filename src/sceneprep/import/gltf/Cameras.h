#pragma once

#include <importing/records/Camera.h>
#include <sceneprep/import/gltf/Field.h>

namespace Sceneprep::GltfImport
{

/// Converts a camera, which looks along -z. Fields of view are in degrees; a perspective camera without an aspect ratio
/// gets the same one on both axes, an orthographic camera keeps the default ones. A missing far plane becomes one a
/// million times as far away as the near plane.
Importing::Camera ConvertCamera(const Field& camera);

}  // namespace Sceneprep::GltfImport
