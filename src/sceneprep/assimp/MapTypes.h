#pragma once

#include <assimp/material.h>

#include <array>
#include <optional>
#include <string>

namespace Sceneprep
{

/// One word of the vocabulary of map types.
struct MapType
{
    const char* name;       ///< Map::GetType()
    aiTextureType texture;  ///< what the model library calls it
};

/// The vocabulary in which importing names the kinds of layers: lower case, words parted by a hyphen. "diffuse" stands
/// also for the base colour of physically based materials.
inline constexpr std::array<MapType, 20> kMapTypes = {{{"diffuse", aiTextureType_DIFFUSE},
                                                       {"base-color", aiTextureType_BASE_COLOR},
                                                       {"specular", aiTextureType_SPECULAR},
                                                       {"ambient", aiTextureType_AMBIENT},
                                                       {"emissive", aiTextureType_EMISSIVE},
                                                       {"height", aiTextureType_HEIGHT},
                                                       {"normal", aiTextureType_NORMALS},
                                                       {"shininess", aiTextureType_SHININESS},
                                                       {"opacity", aiTextureType_OPACITY},
                                                       {"displacement", aiTextureType_DISPLACEMENT},
                                                       {"lightmap", aiTextureType_LIGHTMAP},
                                                       {"reflection", aiTextureType_REFLECTION},
                                                       {"emission-color", aiTextureType_EMISSION_COLOR},
                                                       {"metalness", aiTextureType_METALNESS},
                                                       {"roughness", aiTextureType_DIFFUSE_ROUGHNESS},
                                                       {"metallic-roughness", aiTextureType_UNKNOWN},
                                                       {"ambient-occlusion", aiTextureType_AMBIENT_OCCLUSION},
                                                       {"sheen", aiTextureType_SHEEN},
                                                       {"clearcoat", aiTextureType_CLEARCOAT},
                                                       {"transmission", aiTextureType_TRANSMISSION}}};

/// @return the model library's kind of texture; none for a word outside the vocabulary.
std::optional<aiTextureType> FindTextureType(const std::string& mapType);

}  // namespace Sceneprep
