#include <pipeline/steps/NameSurfaces.h>

#include <pipeline/steps/CountRenamed.h>

namespace Pipeline
{

Changes NameSurfaces(const WorkScene& scene, const PrepareOptions& /*options*/, const PartListener& /*listener*/)
{
    Importing::SceneContainer& container = scene.container;
    return {
        {"surfaces renamed", CountRenamed(container.SurfaceLibrary, [&container] { container.CreateSurfaceNames(); })}};
}

}  // namespace Pipeline
