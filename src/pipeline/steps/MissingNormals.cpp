#include <pipeline/steps/MissingNormals.h>

#include <importing/geometry/Triangles.h>
#include <pipeline/scene/HasNormals.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <pipeline/steps/ForEachMesh.h>
#include <pipeline/steps/WeldMesh.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace Pipeline
{

using Importing::Geometry;
using Importing::Vertex;

void ComputeMissingNormals(const WorkScene& scene, const PrepareOptions& options, Changes& changes)
{
    std::size_t computed = 0;
    ForEachMesh(scene, IgnorePart, [&](std::size_t, Geometry& geometry) {
        if (!HasTriangles(geometry) || HasNormals(geometry))
            return;
        if (options.weld)
            WeldMesh(geometry);
        geometry.ComputeNormals();
        ++computed;
    });
    if (computed > 0)
        changes.push_back({"meshes without normals got computed ones", computed});
}

void MakeFlatNormals(Geometry& geometry)
{
    if (!HasTriangles(geometry))
        return;
    const std::size_t corners = geometry.IndexArray.size() / 3 * 3;
    std::vector<Vertex> vertices;
    std::vector<std::uint32_t> indices;
    vertices.reserve(corners);
    indices.reserve(corners);
    for (std::size_t first = 0; first < corners; first += 3)
    {
        const auto position = [&](std::size_t corner) {
            return geometry.VertexArray[geometry.IndexArray[first + corner]].Vertex::GetPosition();
        };
        const D3DXVECTOR3 normal = Importing::TriangleNormal(position(0), position(1), position(2));
        for (std::size_t corner = first; corner < first + 3; ++corner)
        {
            indices.push_back(static_cast<std::uint32_t>(vertices.size()));
            vertices.push_back(geometry.VertexArray[geometry.IndexArray[corner]]);
            vertices.back().SetNormal(normal);
        }
    }
    geometry.VertexArray = std::move(vertices);
    geometry.IndexArray = std::move(indices);
    geometry.SetPolySize(geometry.GetPolySize());  // invalidates the content hash
}

}  // namespace Pipeline
