#include <pipeline/steps/UnifyNormals.h>

#include <pipeline/steps/ForEachMesh.h>
#include <pipeline/steps/MissingNormals.h>

#include <vector>

namespace Pipeline
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;

std::vector<D3DXVECTOR3> NormalsOf(Geometry& geometry)
{
    std::vector<D3DXVECTOR3> normals;
    normals.reserve(geometry.VertexArray.size());
    for (Vertex& vertex : geometry.VertexArray)
        normals.push_back(vertex.GetNormal());
    return normals;
}

std::size_t CountChangedNormals(const std::vector<D3DXVECTOR3>& before, Geometry& geometry)
{
    std::size_t changed = 0;
    for (std::size_t v = 0; v < before.size(); ++v)
        changed += before[v] != geometry.VertexArray[v].GetNormal() ? 1 : 0;
    return changed;
}

}  // namespace

Changes UnifyNormals(const WorkScene& scene, const PrepareOptions& options, const PartListener& listener)
{
    Changes changes;
    ComputeMissingNormals(scene, options, changes);
    std::size_t flipped = 0;
    ForEachMesh(scene, listener, [&flipped](std::size_t, Geometry& geometry) {
        const std::vector<D3DXVECTOR3> before = NormalsOf(geometry);
        geometry.UnifyNormals(false);
        flipped += CountChangedNormals(before, geometry);
    });
    changes.push_back({"normals flipped", flipped});
    return changes;
}

}  // namespace Pipeline
