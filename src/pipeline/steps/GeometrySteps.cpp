#include <pipeline/steps/GeometrySteps.h>

#include <pipeline/scene/SceneStats.h>

#include <cstdint>

namespace Pipeline
{

namespace
{

using Importing::Geometry;
using Importing::SceneContainer;
using Importing::Vertex;

std::size_t CountVertices(const SceneContainer& scene)
{
    std::size_t count = 0;
    for (const Geometry& geometry : scene.GeometryLibrary)
        count += geometry.VertexArray.size();
    return count;
}

/// Large meshes take longer: parts are told by vertices.
template <typename Visit>
void ForEachMesh(SceneContainer& scene, const PartListener& listener, Visit visit)
{
    PartCounter counter(listener, CountVertices(scene));
    for (Geometry& geometry : scene.GeometryLibrary)
    {
        if (IsEmptied(geometry))
            continue;
        const std::size_t vertices = geometry.VertexArray.size();
        visit(geometry);
        counter.Add(vertices);
    }
}

std::size_t CountTurnedTriangles(const std::vector<std::uint32_t>& before, const std::vector<std::uint32_t>& after)
{
    std::size_t turned = 0;
    for (std::size_t i = 0; i + 2 < before.size(); i += 3)
        turned += before[i + 1] != after[i + 1] || before[i + 2] != after[i + 2] ? 1 : 0;
    return turned;
}

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

std::string TitleOf(const UVMapping& mapping)
{
    return "Generate " + mapping.projection + " UVs, set " + std::to_string(mapping.set);
}

}  // namespace

void AddGeometrySteps(StepSequence& pipeline, const StepOptions& options)
{
    if (options.fixCulling)
        pipeline.AddGradual("Fix culling", FixCulling);
    if (options.weld && options.normals)
        pipeline.AddGradual("Forget normals", ForgetNormals);
    if (options.weld)
        pipeline.AddGradual("Weld", Weld);
    if (options.normals)
        pipeline.AddGradual("Compute normals", ComputeNormals);
    if (options.unifyNormals)
        pipeline.AddGradual("Unify normals", UnifyNormals);
    for (const UVMapping& mapping : options.uvs)
        pipeline.AddGradual(TitleOf(mapping), [mapping](SceneContainer& scene, const PartListener& listener) {
            ForEachMesh(scene, listener, [&mapping](Geometry& geometry) { GenerateUVs(geometry, mapping); });
            return Changes();
        });
}

Changes FixCulling(SceneContainer& scene, const PartListener& listener)
{
    std::size_t turned = 0;
    ForEachMesh(scene, listener, [&turned](Geometry& geometry) {
        const std::vector<std::uint32_t> before = geometry.IndexArray;
        geometry.FixFaceCulling(false);
        turned += CountTurnedTriangles(before, geometry.IndexArray);
    });
    return {{"triangles turned", turned}};
}

Changes ForgetNormals(SceneContainer& scene, const PartListener& listener)
{
    ForEachMesh(scene, listener, [](Geometry& geometry) {
        for (Vertex& vertex : geometry.VertexArray)
            vertex.SetNormal(D3DXVECTOR3(0, 0, 0));
    });
    return {};
}

Changes Weld(SceneContainer& scene, const PartListener& listener)
{
    const std::size_t before = CountVertices(scene);
    ForEachMesh(scene, listener, [](Geometry& geometry) { geometry.Optimize(); });
    return {{"vertices removed", before - CountVertices(scene)}};
}

Changes ComputeNormals(SceneContainer& scene, const PartListener& listener)
{
    const std::size_t before = CountVertices(scene);
    ForEachMesh(scene, listener, [](Geometry& geometry) { geometry.ComputeNormals(); });
    return {{"vertices split", CountVertices(scene) - before}};
}

Changes UnifyNormals(SceneContainer& scene, const PartListener& listener)
{
    std::size_t turned = 0;
    ForEachMesh(scene, listener, [&turned](Geometry& geometry) {
        const std::vector<D3DXVECTOR3> before = NormalsOf(geometry);
        geometry.UnifyNormals(false);
        turned += CountChangedNormals(before, geometry);
    });
    return {{"normals turned", turned}};
}

}  // namespace Pipeline
