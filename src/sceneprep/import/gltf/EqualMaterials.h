#pragma once

#include <sceneprep/import/gltf/Field.h>

#include <vector>

namespace Sceneprep::GltfImport
{

/// Finds materials that are equal in everything: their objects agree, with references to textures replaced by what the
/// textures are. A material that an animation changes is equal to no other.
/// @return [materials] the first material that is equal to it.
std::vector<int> FindEqualMaterials(const Field& document);

}  // namespace Sceneprep::GltfImport
