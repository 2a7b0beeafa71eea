#pragma once

#include <importing/records/Map.h>
#include <importing/records/Material.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/TextureLibrary.h>

#include <vector>

namespace Sceneprep::GltfImport
{

/// Converts the properties that the container's material has: colours of the metallic-roughness or the
/// specular-glossiness model, and the power that corresponds to the roughness. Only the alpha mode BLEND makes a
/// material transparent.
Importing::Material ConvertMaterial(const Field& material);

/// Converts the textures of a material to layers; v is counted upwards in their matrices. The amount is the scale of a
/// normal texture and the strength of an occlusion texture.
std::vector<Importing::Map> ConvertLayers(const Field& material, TextureLibrary& textures);

}  // namespace Sceneprep::GltfImport
