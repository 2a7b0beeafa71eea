#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>
#include <vector>

namespace Support
{

/// Returns a vertex with a position, a normal and one UV set.
Importing::Vertex VertexOf(const D3DXVECTOR3& position, const D3DXVECTOR3& normal, const D3DXVECTOR2& texCoord);

/// Returns a mesh with these positions and indices, normals (0, 0, 0) and no texture coordinates.
Importing::Geometry MeshOf(const std::vector<D3DXVECTOR3>& positions, const std::vector<std::uint32_t>& indices);

/// Returns the triangle (0, 0, 0), (1, 0, 0), (0, 1, 0), which faces +z. Every vertex has the given normal.
Importing::Geometry Triangle(const D3DXVECTOR3& normal = D3DXVECTOR3(0, 0, 1));

/// Returns 4 vertices and 2 triangles from (minX, minY) to (maxX, maxY) in the plane z = 0, with normals (0, 0, 1).
Importing::Geometry Quad(float minX = -1, float minY = 0, float maxX = 1, float maxY = 2);

/// Returns the cube from 0 to 1 with 8 shared vertices, 12 triangles that face outwards, and normals (0, 0, 0).
Importing::Geometry Cube8();

/// Returns a box with 4 vertices for each side, 12 triangles that face outwards, the normals of the sides and one UV
/// set from 0 to 1.
Importing::Geometry Box24(const D3DXVECTOR3& min = D3DXVECTOR3(0, 0, 0), const D3DXVECTOR3& max = D3DXVECTOR3(1, 1, 1));

/// Returns triangles (1, 0, 2), (1, 0, 3), ... around the edge from vertex 0 to vertex 1. Face f has the unit normal
/// (sin a, 0, cos a), where a is its angle in degrees. The vertices have normals (0, 0, 0).
Importing::Geometry Fan(const std::vector<float>& angles);

/// Returns two triangles, (0, 1, 2) facing +z and (1, 0, 3), with the given angle in degrees between their normals at
/// the shared edge. The vertices have normals (0, 0, 0).
Importing::Geometry Wedge(float angle);

/// Returns a flat grid of cells of size 1 in the plane z = 0, with two triangles for each cell, normals (0, 0, 1), UVs
/// from 0 to 1, and (columns + 1) x (rows + 1) shared vertices.
Importing::Geometry Grid(std::uint32_t columns, std::uint32_t rows);

/// Returns the same triangles with three vertices of their own each, in index order.
Importing::Geometry UnindexedGrid(std::uint32_t columns, std::uint32_t rows);

}  // namespace Support
