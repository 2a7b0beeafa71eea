#pragma once

#include <importing/geometry/Geometry.h>

#include <functional>
#include <vector>

namespace Pictures
{

/// A box that stands on y = 0 about the y axis, 24 vertices with the normals of its sides.
Importing::Geometry MakeBox(float width, float height, float depth);

/// A curved patch, point(s, t) with s and t from 0 to 1, closed in s. Vertices are shared; normals are those of the
/// surface. Faces look outwards when s turns from +x towards -z and t rises.
Importing::Geometry MakePatch(int columns, int rows, bool closedInT,
                              const std::function<D3DXVECTOR3(float s, float t)>& point);

/// A ball with gentle bumps, its centre at height 1.1.
Importing::Geometry MakeBumpyBall(int columns, int rows, float bump);

/// A ring that stands upright.
Importing::Geometry MakeRing(float radius, float thickness, int columns, int rows);

/// A turned piece: x of the outline is the distance from the y axis. Rows are its points; normals are (0, 1, 0).
Importing::Geometry MakeTurned(const std::vector<D3DXVECTOR2>& outline, int sides);

/// @return the mesh with three vertices of its own for every triangle.
Importing::Geometry Unjoined(const Importing::Geometry& mesh);

}  // namespace Pictures
