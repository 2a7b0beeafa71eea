#pragma once

#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Carried.h>

#include <map>

namespace Sceneprep::GltfImport
{

/// Reads all animations into Carried::clips; keys are not resampled. Channels without a target are dropped, as the
/// format requires.
/// @throws FormatError if samplers or accessors do not exist or do not match.
void CarryClips(const Field& document, Accessors& accessors, Carried& carried);

}  // namespace Sceneprep::GltfImport
