#include <support/BenchMeshes.h>

#include <cmath>
#include <utility>

using Importing::Geometry;
using Importing::Vertex;

namespace
{

/// A grid of so many vertices in each direction.
struct GridSize
{
    std::uint32_t columns;
    std::uint32_t rows;
};

/// The smallest square, roughly, of at least that many vertices.
GridSize GridOf(std::int64_t vertexCount)
{
    const auto columns = static_cast<std::uint32_t>(std::sqrt(static_cast<double>(vertexCount)));
    const auto rows = static_cast<std::uint32_t>((vertexCount + columns - 1) / columns);
    return {columns, rows};
}

float Bump(std::uint32_t column, std::uint32_t row) { return 0.02F * static_cast<float>((7 * column + 3 * row) % 5); }

float Fold(std::uint32_t /*column*/, std::uint32_t row) { return static_cast<float>(row % 2); }

template <typename Height>
Geometry MakeGridOf(GridSize size, Height height)
{
    Geometry mesh;
    mesh.VertexArray.reserve(std::size_t{size.columns} * size.rows);
    for (std::uint32_t row = 0; row < size.rows; ++row)
    {
        for (std::uint32_t column = 0; column < size.columns; ++column)
        {
            const auto x = static_cast<float>(column);
            const auto y = static_cast<float>(row);
            Vertex vertex(x, y, height(column, row));
            vertex.SetNormal(D3DXVECTOR3(0, 0, 1));
            vertex.SetTexCoord(D3DXVECTOR2(x, y), 0);
            mesh.VertexArray.push_back(std::move(vertex));
        }
    }

    mesh.IndexArray.reserve(std::size_t{6} * (size.columns - 1) * (size.rows - 1));
    for (std::uint32_t row = 0; row + 1 < size.rows; ++row)
    {
        for (std::uint32_t column = 0; column + 1 < size.columns; ++column)
        {
            const std::uint32_t a = row * size.columns + column;
            const std::uint32_t b = a + size.columns;
            mesh.IndexArray.insert(mesh.IndexArray.end(), {a, a + 1, b + 1, a, b + 1, b});
        }
    }
    return mesh;
}

}  // namespace

Geometry MakeSurface(std::int64_t vertexCount) { return MakeGridOf(GridOf(vertexCount), Bump); }

Geometry MakeFoldedSurface(std::int64_t vertexCount) { return MakeGridOf(GridOf(vertexCount), Fold); }

Geometry MakeTriangleSoup(std::int64_t vertexCount)
{
    // Six corners to a cell.
    const GridSize cells = GridOf((vertexCount + 5) / 6);
    const Geometry shared = MakeGridOf({cells.columns + 1, cells.rows + 1}, Bump);

    Geometry soup;
    soup.VertexArray.reserve(shared.IndexArray.size());
    soup.IndexArray.reserve(shared.IndexArray.size());
    for (const std::uint32_t index : shared.IndexArray)
    {
        soup.IndexArray.push_back(static_cast<std::uint32_t>(soup.VertexArray.size()));
        soup.VertexArray.push_back(shared.VertexArray[index]);
    }
    return soup;
}
