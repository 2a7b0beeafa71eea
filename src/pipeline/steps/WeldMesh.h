#pragma once

#include <importing/geometry/Geometry.h>

namespace Pipeline
{

/// Welds the vertices of equal content and drops the vertices that no index uses. A mesh without equal vertices does
/// not change at all; its unused vertices stay.
///
/// Two vertices are equal if position, normal, every UV set and every weight are equal. Floats are compared by their
/// bits without the lowest 8, as content hashes take them: +0 and -0 differ, and two NaNs may be equal. Weights are
/// compared by all their bits. The survivors are in the order in which the index array uses them first; of equal
/// vertices the one that the index array uses first survives.
///
/// The result is that of Geometry::Optimize() where no two different vertices of the mesh have the same content hash.
/// Unlike that operation this one compares the content itself, so different vertices are never welded or doubled.
/// The point cache keeps the old numbering.
///
/// Cost: linear on average; 12 to 16 bytes of temporary memory for each vertex, and 4 for each index.
/// @throws std::out_of_range with the mesh unchanged, when there are equal vertices and an index is not valid.
void WeldMesh(Importing::Geometry& geometry);

}  // namespace Pipeline
