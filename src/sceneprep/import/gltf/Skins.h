#pragma once

#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/Nodes.h>
#include <sceneprep/model/Model.h>

namespace Sceneprep::GltfImport
{

/// Reads all skins into Carried::skins. A skin without inverse bind matrices has identities.
/// @throws FormatError when joints do not exist, or there are fewer matrices than joints.
void CarrySkins(const Field& document, Accessors& accessors, Carried& carried);

/// Gives the geometries of skinned surfaces their joints, as SkinPlacement does. Nodes and their animations have to be
/// in the container, and skins carried.
void PlaceSkins(const SceneNodes& nodes, Model& model);

}  // namespace Sceneprep::GltfImport
