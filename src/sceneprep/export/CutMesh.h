#pragma once

#include <importing/geometry/Geometry.h>

#include <cstddef>
#include <vector>

namespace Sceneprep
{

/// Cuts a mesh of triangles into parts that a format can hold; together they show what the mesh shows.
///
/// Triangles keep their order. Parts have the vertices that their triangles use, in the order of first use.
/// @param largest  how many vertices, and how many triangles, a part may have; 3 or more
/// @return the parts: names, vertices and triangles. Joints are left out, for no format that needs this holds them.
/// @throws std::out_of_range when an index leads to no vertex.
std::vector<Importing::Geometry> CutMesh(Importing::Geometry& mesh, std::size_t largest);

/// @return whether the mesh has more vertices or triangles than that.
bool IsLargerThan(std::size_t largest, const Importing::Geometry& mesh);

}  // namespace Sceneprep
