#include <pipeline/steps/SceneSteps.h>

#include <algorithm>

namespace Pipeline
{

Changes ResolveInstances(Importing::SceneContainer& scene)
{
    const std::size_t before = scene.GeometryLibrary.size();
    scene.ResolveGeomInstances();
    return {{"meshes copied", scene.GeometryLibrary.size() - before}};
}

Changes ComputeCollisionOffsets(Importing::SceneContainer& scene)
{
    scene.CalculateSurfaceCollisionOffset();
    int largest = 0;
    std::size_t raised = 0;
    for (const Importing::Surface& surface : scene.SurfaceLibrary)
    {
        raised += surface.GetCollisionOffset() > 0 ? 1 : 0;
        largest = std::max(largest, surface.GetCollisionOffset());
    }
    return {{"surfaces with an offset", raised}, {"is the largest offset", static_cast<std::size_t>(largest)}};
}

}  // namespace Pipeline
