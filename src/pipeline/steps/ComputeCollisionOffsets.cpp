#include <pipeline/steps/ComputeCollisionOffsets.h>

#include <algorithm>

namespace Pipeline
{

Changes ComputeCollisionOffsets(const WorkScene& scene, const PrepareOptions& /*options*/,
                                const PartListener& /*listener*/)
{
    scene.container.CalculateSurfaceCollisionOffset();
    int largest = 0;
    std::size_t raised = 0;
    for (const Importing::Surface& surface : scene.container.SurfaceLibrary)
    {
        raised += surface.GetCollisionOffset() > 0 ? 1 : 0;
        largest = std::max(largest, surface.GetCollisionOffset());
    }
    return {{"surfaces with an offset", raised}, {"is the largest offset", static_cast<std::size_t>(largest)}};
}

}  // namespace Pipeline
