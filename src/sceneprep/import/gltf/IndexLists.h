#pragma once

#include <sceneprep/import/gltf/Primitives.h>

#include <cstdint>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The polygons of a primitive as a plain list.
struct IndexList
{
    std::size_t polySize = 3;  ///< 1 for points, 2 for lines, 3 for triangles
    std::vector<std::uint32_t> indices = {};
    std::size_t leftOver = 0;  ///< indices at the end that do not complete a polygon, and are not in the list
};

/// Converts strips, fans and loops to plain lists; triangles keep their winding. Without indices, vertices are used in
/// order.
/// @throws FormatError if an index is not below the number of vertices.
IndexList MakeIndexList(const Primitive& primitive, const Field& field);

}  // namespace Sceneprep::GltfImport
