#include <pipeline/steps/ResolveInstances.h>

#include <importing/base/CheckedAccess.h>

#include <algorithm>
#include <cstddef>
#include <utility>
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

/// Returns for each mesh [geometries] how many references to a surface show it.
std::vector<int> CountUses(const SceneContainer& scene)
{
    std::vector<int> uses(scene.GeometryLibrary.size(), 0);
    for (const Importing::Node& node : scene.NodeLibrary)
    {
        for (const std::int32_t surface : node.SurfaceList)
        {
            const int mesh = Importing::At(scene.SurfaceLibrary, surface).GetGeometryID();
            if (mesh >= 0)
                ++Importing::At(uses, mesh);
        }
    }
    return uses;
}

/// Marks the meshes that stay shared: those with at least `leastUses` uses, and at least two.
/// @return how many.
std::size_t MarkSharedMeshes(const WorkScene& scene, int leastUses)
{
    std::vector<bool>& shared = scene.supplement.sharedMeshes;
    shared.assign(scene.container.GeometryLibrary.size(), false);
    if (leastUses <= 0)
        return 0;
    const std::vector<int> uses = CountUses(scene.container);
    for (std::size_t mesh = 0; mesh < uses.size(); ++mesh)
        shared[mesh] = uses[mesh] >= std::max(leastUses, 2);
    return static_cast<std::size_t>(std::count(shared.begin(), shared.end(), true));
}

/// Takes the shared meshes from their surfaces, and gives them back when it is destroyed.
class HiddenMeshes
{
public:
    explicit HiddenMeshes(const WorkScene& scene) : surfaces_(scene.container.SurfaceLibrary)
    {
        for (std::size_t surface = 0; surface < surfaces_.size(); ++surface)
        {
            const int mesh = surfaces_[surface].GetGeometryID();
            if (mesh < 0 || !IsShared(scene.supplement, static_cast<std::size_t>(mesh)))
                continue;
            hidden_.emplace_back(surface, mesh);
            surfaces_[surface].SetGeometryID(-1);
        }
    }
    ~HiddenMeshes()
    {
        for (const auto& [surface, mesh] : hidden_)
            surfaces_[surface].SetGeometryID(mesh);
    }
    HiddenMeshes(const HiddenMeshes&) = delete;
    HiddenMeshes& operator=(const HiddenMeshes&) = delete;

private:
    std::vector<Importing::Surface>& surfaces_;
    std::vector<std::pair<std::size_t, int>> hidden_;
};

}  // namespace

Changes ResolveInstances(const WorkScene& scene, const PrepareOptions& options, const PartListener& /*listener*/)
{
    SceneContainer& container = scene.container;
    CopySharedSurfaces(container);
    const std::size_t shared = MarkSharedMeshes(scene, options.keepInstances);
    const std::size_t before = container.GeometryLibrary.size();
    const std::vector<int> meshesBefore = MeshesOfSurfaces(container);
    {
        const HiddenMeshes hidden(scene);
        container.ResolveGeomInstances();
    }
    for (std::size_t surface = 0; surface < meshesBefore.size(); ++surface)
    {
        const int mesh = container.SurfaceLibrary[surface].GetGeometryID();
        if (mesh != meshesBefore[surface])
            CopyMeshEntries(scene.supplement, static_cast<std::size_t>(meshesBefore[surface]),
                            static_cast<std::size_t>(mesh));
    }
    Changes changes = {{"meshes copied", container.GeometryLibrary.size() - before}};
    if (shared > 0)
        changes.push_back({"meshes kept shared", shared});
    return changes;
}

}  // namespace Pipeline
