#pragma once

#include <sceneprep/import/gltf/Field.h>

#include <vector>

namespace Sceneprep::GltfImport
{

/// Finds materials that are equal in everything: their objects are equal, and so is the content of the textures that
/// they refer to. A material that an animation changes is not equal to any other.
/// @return [materials] the first material that is equal to it
std::vector<int> FindEqualMaterials(const Field& document);

}  // namespace Sceneprep::GltfImport
