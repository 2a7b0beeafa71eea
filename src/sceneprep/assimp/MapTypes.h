#pragma once

#include <assimp/material.h>

#include <array>
#include <optional>
#include <string>

namespace Sceneprep
{

/// A map type, and the texture type of Assimp that it corresponds to.
struct MapType
{
    const char* name;       ///< Map::GetType()
    aiTextureType texture;  ///< Assimp's texture type
};

/// The map types that the importers use: lower case, words separated by hyphens. "diffuse" is also used for the base
/// colour of physically based materials.
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

/// Returns Assimp's texture type; none if the map type is not in kMapTypes.
std::optional<aiTextureType> FindTextureType(const std::string& mapType);

}  // namespace Sceneprep
