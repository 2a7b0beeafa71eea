#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>

namespace Importing
{

/// @throws std::out_of_range when the first triangle of a mesh of triangles is not there. Other meshes have none.
void CheckFirstTriangle(const Geometry& mesh);

/// Flips the faces of a mesh whose first triangle faces away from the normal of its first vertex, both carried by the
/// world matrix. Meshes of anything but triangles are left alone.
///
/// Deliberate: a triangle that leans less than 0.05 (as a dot product of unit vectors) towards the normal is flipped
/// too, and the first triangle decides for the whole mesh.
void FlipIfFirstTriangleFacesAway(Geometry& mesh, const D3DXMATRIX& world);

}  // namespace Importing
