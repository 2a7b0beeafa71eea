#include <pipeline/steps/CheckOrientation.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/steps/Facing.h>
#include <pipeline/steps/MissingNormals.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Pipeline
{

using Importing::At;
using Importing::SceneContainer;

namespace
{

/// Remembers the triangles of pinned meshes, which the container flips with the others.
class PinnedIndices
{
public:
    explicit PinnedIndices(const WorkScene& work)
    {
        const std::vector<Importing::Geometry>& meshes = work.container.GeometryLibrary;
        for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh)
        {
            if (IsPinned(work.supplement, mesh))
                indices_.emplace_back(mesh, meshes[mesh].IndexArray);
        }
    }

    void Restore(const WorkScene& work) const
    {
        for (const auto& [mesh, indices] : indices_)
            work.container.GeometryLibrary[mesh].IndexArray = indices;
    }

private:
    std::vector<std::pair<std::size_t, std::vector<std::uint32_t>>> indices_;
};

}  // namespace

Changes CheckOrientation(const WorkScene& work, const PrepareOptions& options, const PartListener& /*listener*/)
{
    SceneContainer& scene = work.container;
    const int root = scene.GetRootNodeIndex();
    if (root < 0)
        return {{"meshes flipped", 0}};
    Changes changes;
    ComputeMissingNormals(work, options, changes);
    const WindingRecord winding(scene);
    const NodeWalk walk = WalkFromRoot(scene);
    const std::vector<bool> mirrored = FindMirroredNodes(scene, walk);

    const PinnedIndices pinned(work);
    TurnFacesOfNodes(scene, walk, mirrored);
    scene.CheckFacesOrientation(root, At(scene.NodeLibrary, root).GetLocalTransform().GetMatrix());
    TurnFacesOfNodes(scene, walk, mirrored);
    pinned.Restore(work);
    changes.push_back({"meshes flipped", winding.CountTurned(scene)});
    return changes;
}

}  // namespace Pipeline
