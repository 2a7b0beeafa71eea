#include <pipeline/steps/SpatialCells.h>

#include <importing/base/CheckedAccess.h>
#include <importing/base/ForReading.h>
#include <pipeline/scene/ShownSurfaces.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>
#include <unordered_map>

namespace Pipeline
{

namespace
{

using Importing::At;

/// Coordinates of a cell in units of its size: whole numbers, kept as floating-point numbers because they may be large.
using CellKey = std::array<double, 3>;

/// Returns the centre of the bounds of a mesh, (0, 0, 0) without vertices. GetBoundingBox() is not used, because its
/// upper corner is not below 0.
D3DXVECTOR3 CentreOf(const Importing::Geometry& mesh)
{
    if (mesh.VertexArray.empty())
        return {0, 0, 0};
    D3DXVECTOR3 min = Importing::ForReading(mesh.VertexArray.front()).Vertex::GetPosition();
    D3DXVECTOR3 max = min;
    for (const Importing::Vertex& vertex : mesh.VertexArray)
    {
        const D3DXVECTOR3 p = Importing::ForReading(vertex).Vertex::GetPosition();
        min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
    }
    return {min.x / 2 + max.x / 2, min.y / 2 + max.y / 2, min.z / 2 + max.z / 2};
}

CellKey CellOf(const Importing::Geometry& mesh, const D3DXMATRIX& world, double size)
{
    CellKey key = ToWorld(CentreOf(mesh), world);
    for (double& coordinate : key)
    {
        coordinate = std::floor(coordinate / size);
        if (!std::isfinite(coordinate))
            return {std::numeric_limits<double>::infinity(), 0, 0};
    }
    return key;
}

}  // namespace

std::vector<int> FindCells(Importing::SceneContainer& scene, const NodeWalk& walk, double size)
{
    const std::vector<D3DXMATRIX> worlds = WorldMatricesOf(scene, walk);
    std::vector<int> cells(scene.SurfaceLibrary.size(), -1);
    std::map<CellKey, int> numbers;
    for (const int node : walk.order)
    {
        for (const std::int32_t surface : At(scene.NodeLibrary, node).SurfaceList)
        {
            const int mesh = At(scene.SurfaceLibrary, surface).GetGeometryID();
            int& cell = At(cells, surface);
            if (cell >= 0 || mesh < 0)
                continue;
            const CellKey key = CellOf(At(scene.GeometryLibrary, mesh), At(worlds, node), size);
            cell = numbers.try_emplace(key, static_cast<int>(numbers.size())).first->second;
        }
    }
    return cells;
}

std::vector<std::vector<std::int32_t>> SplitByCell(const std::vector<std::int32_t>& surfaces,
                                                   const std::vector<int>& cellOf)
{
    if (cellOf.empty())
        return {surfaces};
    std::vector<std::vector<std::int32_t>> parts;
    std::unordered_map<int, std::size_t> partOf;  // by cell
    for (const std::int32_t surface : surfaces)
    {
        const auto [part, isNew] = partOf.try_emplace(At(cellOf, surface), parts.size());
        if (isNew)
            parts.emplace_back();
        parts[part->second].push_back(surface);
    }
    return parts;
}

}  // namespace Pipeline
