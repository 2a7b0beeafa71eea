#include <pipeline/steps/ComputeNormals.h>

#include <pipeline/steps/ForEachMesh.h>

namespace Pipeline
{

Changes ComputeNormals(const WorkScene& scene, const PrepareOptions& /*options*/, const PartListener& listener)
{
    const std::size_t before = CountVertices(scene.container);
    ForEachMesh(scene, listener, [](std::size_t, Importing::Geometry& geometry) { geometry.ComputeNormals(); });
    return {{"vertices split", CountVertices(scene.container) - before}};
}

}  // namespace Pipeline
