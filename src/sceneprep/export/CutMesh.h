#pragma once

#include <importing/geometry/Geometry.h>

#include <cstddef>
#include <vector>

namespace Sceneprep
{

/// Splits a mesh of triangles into parts that a format can hold. Takes linear time on average; `mesh` does not change.
///
/// The triangles keep their order: each part takes as many as fit. A part has the vertices that its triangles use, in
/// the order of first use, and the name of the mesh. Joints are dropped, because the formats with such a limit have no
/// skins.
/// @param largest  the largest number of vertices, and of triangles, of a part; 3 or more
/// @throws std::out_of_range if an index of a triangle is not valid.
std::vector<Importing::Geometry> CutMesh(Importing::Geometry& mesh, std::size_t largest);

/// Returns whether the mesh has more than `largest` vertices or triangles.
bool IsLargerThan(std::size_t largest, const Importing::Geometry& mesh);

}  // namespace Sceneprep
