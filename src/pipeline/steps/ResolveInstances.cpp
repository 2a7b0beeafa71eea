#include <pipeline/steps/ResolveInstances.h>

#include <importing/base/CheckedAccess.h>

#include <vector>

namespace Pipeline
{

namespace
{

using Importing::SceneContainer;

std::vector<int> MeshesOfSurfaces(const SceneContainer& scene)
{
    std::vector<int> meshes;
    meshes.reserve(scene.SurfaceLibrary.size());
    for (const Importing::Surface& surface : scene.SurfaceLibrary)
        meshes.push_back(surface.GetGeometryID());
    return meshes;
}

/// Replaces every repeated reference to a surface by one to a copy, since a surface has one mesh only.
void CopySharedSurfaces(SceneContainer& scene)
{
    std::vector<bool> isMet(scene.SurfaceLibrary.size(), false);
    for (Importing::Node& node : scene.NodeLibrary)
    {
        for (std::int32_t& surface : node.SurfaceList)
        {
            const auto position = static_cast<std::size_t>(surface);
            if (isMet[position])
                surface = scene.AddSurfaceToLibrary(Importing::At(scene.SurfaceLibrary, surface), false);
            else
                isMet[position] = true;
        }
    }
}

}  // namespace

Changes ResolveInstances(const WorkScene& scene, const PrepareOptions& /*options*/, const PartListener& /*listener*/)
{
    SceneContainer& container = scene.container;
    CopySharedSurfaces(container);
    const std::size_t before = container.GeometryLibrary.size();
    const std::vector<int> meshesBefore = MeshesOfSurfaces(container);
    container.ResolveGeomInstances();
    for (std::size_t surface = 0; surface < meshesBefore.size(); ++surface)
    {
        const int mesh = container.SurfaceLibrary[surface].GetGeometryID();
        if (mesh != meshesBefore[surface])
            CopyMeshEntries(scene.supplement, static_cast<std::size_t>(meshesBefore[surface]),
                            static_cast<std::size_t>(mesh));
    }
    return {{"meshes copied", container.GeometryLibrary.size() - before}};
}

}  // namespace Pipeline
