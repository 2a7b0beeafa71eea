#include <support/Meshes.h>

#include <cmath>
#include <cstddef>

namespace Support
{

using Importing::Geometry;
using Importing::Vertex;

namespace
{

float SinOfDegrees(float angle) { return static_cast<float>(std::sin(angle * 3.14159265358979 / 180)); }

float CosOfDegrees(float angle) { return static_cast<float>(std::cos(angle * 3.14159265358979 / 180)); }

void SetNormals(Geometry& mesh, const D3DXVECTOR3& normal)
{
    for (Vertex& vertex : mesh.VertexArray)
        vertex.SetNormal(normal);
}

void AddQuad(Geometry& mesh, std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
{
    mesh.IndexArray.insert(mesh.IndexArray.end(), {a, b, c, a, c, d});
}

/// One side of a box: a corner and two edges whose cross product is the outward normal.
void AddSide(Geometry& mesh, const D3DXVECTOR3& corner, const D3DXVECTOR3& u, const D3DXVECTOR3& v,
             const D3DXVECTOR3& normal)
{
    const auto first = static_cast<std::uint32_t>(mesh.VertexArray.size());
    mesh.VertexArray.push_back(VertexOf(corner, normal, D3DXVECTOR2(0, 0)));
    mesh.VertexArray.push_back(VertexOf(corner + u, normal, D3DXVECTOR2(1, 0)));
    mesh.VertexArray.push_back(VertexOf(corner + u + v, normal, D3DXVECTOR2(1, 1)));
    mesh.VertexArray.push_back(VertexOf(corner + v, normal, D3DXVECTOR2(0, 1)));
    AddQuad(mesh, first, first + 1, first + 2, first + 3);
}

}  // namespace

Vertex VertexOf(const D3DXVECTOR3& position, const D3DXVECTOR3& normal, const D3DXVECTOR2& texCoord)
{
    Vertex vertex(position);
    vertex.SetNormal(normal);
    vertex.SetTexCoord(texCoord, 0);
    return vertex;
}

Geometry MeshOf(const std::vector<D3DXVECTOR3>& positions, const std::vector<std::uint32_t>& indices)
{
    Geometry mesh;
    for (const D3DXVECTOR3& position : positions)
        mesh.VertexArray.emplace_back(position);
    mesh.IndexArray = indices;
    return mesh;
}

Geometry Triangle(const D3DXVECTOR3& normal)
{
    Geometry mesh = MeshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 2});
    SetNormals(mesh, normal);
    return mesh;
}

Geometry Quad(float minX, float minY, float maxX, float maxY)
{
    Geometry mesh = MeshOf({{minX, minY, 0}, {maxX, minY, 0}, {maxX, maxY, 0}, {minX, maxY, 0}}, {0, 1, 2, 0, 2, 3});
    SetNormals(mesh, D3DXVECTOR3(0, 0, 1));
    return mesh;
}

Geometry Cube8()
{
    Geometry mesh =
        MeshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}, {});
    AddQuad(mesh, 0, 3, 2, 1);
    AddQuad(mesh, 4, 5, 6, 7);
    AddQuad(mesh, 0, 1, 5, 4);
    AddQuad(mesh, 2, 3, 7, 6);
    AddQuad(mesh, 0, 4, 7, 3);
    AddQuad(mesh, 1, 2, 6, 5);
    return mesh;
}

Geometry Box24(const D3DXVECTOR3& min, const D3DXVECTOR3& max)
{
    const D3DXVECTOR3 x(max.x - min.x, 0, 0);
    const D3DXVECTOR3 y(0, max.y - min.y, 0);
    const D3DXVECTOR3 z(0, 0, max.z - min.z);
    Geometry mesh;
    AddSide(mesh, min, y, x, D3DXVECTOR3(0, 0, -1));
    AddSide(mesh, min + z, x, y, D3DXVECTOR3(0, 0, 1));
    AddSide(mesh, min, x, z, D3DXVECTOR3(0, -1, 0));
    AddSide(mesh, min + y, z, x, D3DXVECTOR3(0, 1, 0));
    AddSide(mesh, min, z, y, D3DXVECTOR3(-1, 0, 0));
    AddSide(mesh, min + x, y, z, D3DXVECTOR3(1, 0, 0));
    return mesh;
}

Geometry Fan(const std::vector<float>& angles)
{
    Geometry mesh = MeshOf({{0, 0, 0}, {0, 1, 0}}, {});
    for (const float angle : angles)
    {
        const auto tip = static_cast<std::uint32_t>(mesh.VertexArray.size());
        mesh.VertexArray.emplace_back(CosOfDegrees(angle), 0.0F, -SinOfDegrees(angle));
        mesh.IndexArray.insert(mesh.IndexArray.end(), {1, 0, tip});
    }
    return mesh;
}

Geometry Wedge(float angle)
{
    return MeshOf({{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {CosOfDegrees(angle), 0, -SinOfDegrees(angle)}},
                  {0, 1, 2, 1, 0, 3});
}

Geometry Grid(std::uint32_t columns, std::uint32_t rows)
{
    Geometry mesh;
    mesh.VertexArray.reserve(std::size_t{columns + 1} * (rows + 1));
    mesh.IndexArray.reserve(std::size_t{6} * columns * rows);
    for (std::uint32_t row = 0; row <= rows; ++row)
    {
        for (std::uint32_t column = 0; column <= columns; ++column)
        {
            const auto x = static_cast<float>(column);
            const auto y = static_cast<float>(row);
            mesh.VertexArray.push_back(
                VertexOf(D3DXVECTOR3(x, y, 0), D3DXVECTOR3(0, 0, 1),
                         D3DXVECTOR2(x / static_cast<float>(columns), y / static_cast<float>(rows))));
        }
    }
    for (std::uint32_t row = 0; row < rows; ++row)
    {
        for (std::uint32_t column = 0; column < columns; ++column)
        {
            const std::uint32_t corner = row * (columns + 1) + column;
            AddQuad(mesh, corner, corner + 1, corner + columns + 2, corner + columns + 1);
        }
    }
    return mesh;
}

Geometry UnindexedGrid(std::uint32_t columns, std::uint32_t rows)
{
    const Geometry shared = Grid(columns, rows);
    Geometry mesh;
    mesh.VertexArray.reserve(shared.IndexArray.size());
    mesh.IndexArray.reserve(shared.IndexArray.size());
    for (const std::uint32_t index : shared.IndexArray)
    {
        mesh.IndexArray.push_back(static_cast<std::uint32_t>(mesh.VertexArray.size()));
        mesh.VertexArray.push_back(shared.VertexArray[index]);
    }
    return mesh;
}

}  // namespace Support
