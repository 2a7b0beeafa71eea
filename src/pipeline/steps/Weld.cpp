#include <pipeline/steps/Weld.h>

#include <pipeline/steps/ForEachMesh.h>
#include <pipeline/steps/WeldMesh.h>

namespace Pipeline
{

namespace
{

using Importing::Geometry;

void ForgetNormals(Geometry& geometry)
{
    for (Importing::Vertex& vertex : geometry.VertexArray)
        vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
}

}  // namespace

Changes Weld(const WorkScene& scene, const PrepareOptions& options, const PartListener& listener)
{
    const std::size_t before = CountVertices(scene.container);
    ForEachMesh(scene, listener, [&options](std::size_t, Geometry& geometry) {
        if (options.normals)
            ForgetNormals(geometry);
        WeldMesh(geometry);
    });
    return {{"vertices removed", before - CountVertices(scene.container)}};
}

}  // namespace Pipeline
