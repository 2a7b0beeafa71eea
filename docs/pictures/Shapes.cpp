#include <pictures/Shapes.h>

#include <pictures/Vectors.h>

#include <algorithm>
#include <cstdint>

namespace Pictures
{
namespace
{

using Importing::Geometry;
using Importing::Vertex;
using PatchPoint = std::function<D3DXVECTOR3(float, float)>;

Vertex MakeVertex(const D3DXVECTOR3& position, const D3DXVECTOR3& normal)
{
    Vertex vertex(position);
    vertex.SetNormal(normal);
    return vertex;
}

/// From differences; at a pole, where s makes no difference, straight up or down.
D3DXVECTOR3 PatchNormal(const PatchPoint& point, float s, float t)
{
    constexpr float kStep = 0.002F;
    const D3DXVECTOR3 alongS = point(s + kStep, t) - point(s - kStep, t);
    const D3DXVECTOR3 alongT = point(s, t + kStep) - point(s, t - kStep);
    if (Length(alongS) < kStep * 0.01F)
        return {0, t < 0.5F ? -1.0F : 1.0F, 0};
    return Normalized(Cross(alongS, alongT));
}

void AddTriangle(Geometry& mesh, std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    const D3DXVECTOR3 p = mesh.VertexArray[a].GetPosition();
    const D3DXVECTOR3 normal = Cross(mesh.VertexArray[b].GetPosition() - p, mesh.VertexArray[c].GetPosition() - p);
    if (Length(normal) > 1e-6F)
        mesh.IndexArray.insert(mesh.IndexArray.end(), {a, b, c});
}

/// Two triangles for every cell of a lattice that is closed in its columns.
void AddCells(Geometry& mesh, int columns, int rows, bool closedInRows)
{
    const int lastRow = closedInRows ? rows : rows + 1;
    const auto index = [=](int column, int row) {
        return static_cast<std::uint32_t>(row % lastRow * columns + column % columns);
    };
    for (int row = 0; row < rows; ++row)
    {
        for (int column = 0; column < columns; ++column)
        {
            const std::uint32_t a = index(column, row);
            const std::uint32_t b = index(column + 1, row);
            const std::uint32_t c = index(column + 1, row + 1);
            const std::uint32_t d = index(column, row + 1);
            AddTriangle(mesh, a, b, c);
            AddTriangle(mesh, a, c, d);
        }
    }
}

D3DXVECTOR3 OnCircle(float s, float radius, float height)
{
    const float angle = 2 * kPi * s;
    return {radius * std::cos(angle), height, -radius * std::sin(angle)};
}

}  // namespace

Geometry MakeBox(float width, float height, float depth)
{
    const D3DXVECTOR3 half(width / 2, height / 2, depth / 2);
    const D3DXVECTOR3 axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    Geometry mesh;
    for (int side = 0; side < 6; ++side)
    {
        const float sign = side < 3 ? 1.0F : -1.0F;
        const D3DXVECTOR3 normal = axes[side % 3] * sign;
        const D3DXVECTOR3 across = axes[(side + 1) % 3];
        const D3DXVECTOR3 along = axes[(side + 2) % 3] * sign;
        const auto first = static_cast<std::uint32_t>(mesh.VertexArray.size());
        for (const auto& [u, v] :
             {std::pair(-1.0F, -1.0F), std::pair(1.0F, -1.0F), std::pair(1.0F, 1.0F), std::pair(-1.0F, 1.0F)})
        {
            const D3DXVECTOR3 p = normal + across * u + along * v;
            mesh.VertexArray.push_back(
                MakeVertex(D3DXVECTOR3(p.x * half.x, p.y * half.y + half.y, p.z * half.z), normal));
        }
        mesh.IndexArray.insert(mesh.IndexArray.end(), {first, first + 1, first + 2, first, first + 2, first + 3});
    }
    return mesh;
}

Geometry MakePatch(int columns, int rows, bool closedInT, const PatchPoint& point)
{
    Geometry mesh;
    for (int row = 0; row < (closedInT ? rows : rows + 1); ++row)
    {
        for (int column = 0; column < columns; ++column)
        {
            const float s = static_cast<float>(column) / static_cast<float>(columns);
            const float t = static_cast<float>(row) / static_cast<float>(rows);
            mesh.VertexArray.push_back(MakeVertex(point(s, t), PatchNormal(point, s, t)));
        }
    }
    AddCells(mesh, columns, rows, closedInT);
    return mesh;
}

Geometry MakeBumpyBall(int columns, int rows, float bump)
{
    return MakePatch(columns, rows, false, [bump](float s, float t) {
        const float latitude = kPi * (t - 0.5F);
        const float flat = std::cos(latitude);
        const float radius = 1 + bump * std::sin(6 * kPi * s) * std::sin(4 * kPi * t) * flat * flat;
        return OnCircle(s, radius * flat, 1.1F + radius * std::sin(latitude));
    });
}

Geometry MakeRing(float radius, float thickness, int columns, int rows)
{
    return MakePatch(columns, rows, true, [=](float s, float t) {
        const float angle = 2 * kPi * t;
        const D3DXVECTOR3 lying = OnCircle(s, radius + thickness * std::cos(angle), thickness * std::sin(angle));
        return D3DXVECTOR3(lying.x, radius + thickness - lying.z, lying.y);
    });
}

Geometry MakeTurned(const std::vector<D3DXVECTOR2>& outline, int sides)
{
    Geometry mesh;
    for (const D3DXVECTOR2& point : outline)
    {
        for (int side = 0; side < sides; ++side)
            mesh.VertexArray.push_back(
                MakeVertex(OnCircle(static_cast<float>(side) / static_cast<float>(sides), point.x, point.y),
                           D3DXVECTOR3(0, 1, 0)));
    }
    AddCells(mesh, sides, static_cast<int>(outline.size()) - 1, false);
    return mesh;
}

Geometry Unjoined(const Geometry& mesh)
{
    Geometry unjoined;
    for (const std::uint32_t index : mesh.IndexArray)
    {
        unjoined.IndexArray.push_back(static_cast<std::uint32_t>(unjoined.VertexArray.size()));
        unjoined.VertexArray.push_back(mesh.VertexArray.at(index));
    }
    return unjoined;
}

}  // namespace Pictures
