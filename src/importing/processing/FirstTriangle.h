#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>

namespace Importing
{

/// Checks that a mesh of triangles has a whole first triangle. Meshes of other polygons are not checked. Cost:
/// constant.
/// @throws std::out_of_range when an index of the first triangle, or its vertex, does not exist.
void CheckFirstTriangle(const Geometry& mesh);

/// Flips the winding of a mesh whose first triangle faces away from the normal of its first vertex, both transformed by
/// the world matrix. Meshes of other polygons do not change.
///
/// Deliberate: a triangle is also flipped when the dot product of the two unit normals is between 0 and 0.05.
/// Deliberate: the first triangle decides for the whole mesh.
///
/// Cost: constant, or linear in the indices for a mesh that is flipped.
/// @throws std::out_of_range with nothing changed, as CheckFirstTriangle; or when the mesh is to be flipped and its
///         index count is two more than a multiple of 3.
void FlipIfFirstTriangleFacesAway(Geometry& mesh, const D3DXMATRIX& world);

}  // namespace Importing
