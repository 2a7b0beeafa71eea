#pragma once

#include <assimp/material.h>
#include <sceneprep/model/Json.h>

namespace Sceneprep
{

/// Returns what Assimp knows of a material and the container's Material cannot express, as members of a glTF material:
/// double-sidedness, metalness and roughness, alpha cut-outs, unlit shading, clear coat, sheen, transmission. An empty
/// object where there is nothing of that.
Json MaterialPatch(const aiMaterial& material);

}  // namespace Sceneprep
