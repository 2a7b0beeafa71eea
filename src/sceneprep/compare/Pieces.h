#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace Sceneprep
{

/// One thing that a viewer shows in the world: a triangle, line, point, camera or light.
///
/// Everything is linear, or nearly so, in the values of the corners: noise of the values gives small differences. It
/// does not depend on the order of the corners. Attributes that a mesh does not have count as their default, so that
/// adding defaults changes nothing.
struct Piece
{
    std::array<float, 3> center = {};  ///< in the world
    std::array<float, 3> across = {};  ///< normal of a triangle, as long as twice its area; 0 for other pieces
    std::uint32_t look = 0;            ///< index into Appearance::looks; kFlatNormals may be set in addition
    float size = 0;                    ///< root of the sum of the squared distances of the corners from the centre
    float normals = 0;                 ///< normals of the corners, weighted; direction of a camera or light; NaN: any
    float texCoords = 0;               ///< texture coordinates, weighted
    float others = 0;                  ///< colours, custom attributes and skin weights, weighted
    float tangents = 0;                ///< NaN: any
};
static_assert(sizeof(Piece) == 48, "there may be millions");

/// The normals are those of the triangle, because the mesh has none.
inline constexpr std::uint32_t kFlatNormals = 0x80000000U;

inline std::uint32_t LookOf(const Piece& piece) { return piece.look & ~kFlatNormals; }
inline bool IsFlat(const Piece& piece) { return (piece.look & kFlatNormals) != 0; }

}  // namespace Sceneprep
