#pragma once

#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Carried.h>

#include <map>

namespace Sceneprep::GltfImport
{

/// Reads all animations into Carried::clips, as they are: keys are not resampled. Channels without a target, which the
/// format says to ignore, are dropped.
/// @throws FormatError when samplers and accessors do not exist or do not fit each other.
void CarryClips(const Field& document, Accessors& accessors, Carried& carried);

}  // namespace Sceneprep::GltfImport
