#pragma once

#include <importing/geometry/Geometry.h>

namespace Pipeline
{

/// Returns whether the mesh has normals: at least one that is not (0, 0, 0). Takes linear time.
bool HasNormals(Importing::Geometry& geometry);

}  // namespace Pipeline
