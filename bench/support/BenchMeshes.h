#pragma once

#include <importing/geometry/Geometry.h>

#include <cstdint>

/// A bumpy surface of at least vertexCount vertices that its triangles share, six to a vertex, two triangles a cell of
/// a grid; normals (0, 0, 1) and one UV set. No bend is sharp enough to be a hard edge.
Importing::Geometry MakeSurface(std::int64_t vertexCount);

/// The same surface folded like a paper fan: every second row of vertices is on a hard edge.
Importing::Geometry MakeFoldedSurface(std::int64_t vertexCount);

/// At least vertexCount vertices of a bumpy surface, three of their own to each triangle.
Importing::Geometry MakeTriangleSoup(std::int64_t vertexCount);
