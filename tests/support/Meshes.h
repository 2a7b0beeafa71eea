#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>
#include <vector>

namespace Support
{

/// A position, a normal and one UV set.
Importing::Vertex VertexOf(const D3DXVECTOR3& position, const D3DXVECTOR3& normal, const D3DXVECTOR2& texCoord);

/// Vertices of these positions, normals (0, 0, 0), no texture coordinates.
Importing::Geometry MeshOf(const std::vector<D3DXVECTOR3>& positions, const std::vector<std::uint32_t>& indices);

/// (0, 0, 0), (1, 0, 0), (0, 1, 0), wound to look along +z; every normal is the given one.
Importing::Geometry Triangle(const D3DXVECTOR3& normal = D3DXVECTOR3(0, 0, 1));

/// 4 vertices, 2 triangles from (minX, minY) to (maxX, maxY) in the plane z = 0, normals (0, 0, 1).
Importing::Geometry Quad(float minX = -1, float minY = 0, float maxX = 1, float maxY = 2);

/// The cube from 0 to 1 with 8 shared vertices and 12 triangles that look outwards; normals (0, 0, 0).
Importing::Geometry Cube8();

/// A box with 4 vertices a side, 12 triangles that look outwards, the sides' normals and one UV set from 0 to 1.
Importing::Geometry Box24(const D3DXVECTOR3& min = D3DXVECTOR3(0, 0, 0), const D3DXVECTOR3& max = D3DXVECTOR3(1, 1, 1));

/// Triangles (1, 0, 2), (1, 0, 3), ... around the edge from vertex 0 to vertex 1; face f has the unit normal
/// (sin a, 0, cos a) with a its angle in degrees. Normals (0, 0, 0).
Importing::Geometry Fan(const std::vector<float>& angles);

/// Two triangles, (0, 1, 2) looking along +z and (1, 0, 3), that share an edge over which the mesh bends by so many
/// degrees. Normals (0, 0, 0).
Importing::Geometry Wedge(float angle);

/// A flat grid of cells of size 1 in the plane z = 0, two triangles a cell; normals (0, 0, 1), UVs from 0 to 1.
/// (columns + 1) x (rows + 1) shared vertices.
Importing::Geometry Grid(std::uint32_t columns, std::uint32_t rows);

/// The same triangles with three vertices of their own each, in index order.
Importing::Geometry UnindexedGrid(std::uint32_t columns, std::uint32_t rows);

}  // namespace Support
