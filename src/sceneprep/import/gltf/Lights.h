#pragma once

#include <importing/records/Light.h>
#include <sceneprep/import/gltf/Field.h>

namespace Sceneprep::GltfImport
{

/// Converts a light of KHR_lights_punctual, which shines along -z. Its colours are those of the file times the
/// intensity; light that spreads fades with the square of the distance.
Importing::Light ConvertLight(const Field& light);

}  // namespace Sceneprep::GltfImport
