#pragma once

#include <assimp/material.h>
#include <sceneprep/model/Json.h>

namespace Sceneprep
{

/// Returns the properties of a material that Assimp reads and the container's Material does not have, as members of a
/// glTF material: double-sidedness, metalness and roughness, alpha cut-outs, unlit shading, clear coat, sheen,
/// transmission. The object is empty if the material has none of them.
Json MaterialPatch(const aiMaterial& material);

}  // namespace Sceneprep
