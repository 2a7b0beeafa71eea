#include <pipeline/steps/CheckOrientation.h>

#include <importing/base/CheckedAccess.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <pipeline/steps/Facing.h>
#include <pipeline/steps/MissingNormals.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace Pipeline
{

using Importing::At;
using Importing::SceneContainer;

namespace
{

/// Returns whether the container can judge the surface's mesh by its first triangle, and may flip it.
bool CanBeJudged(const WorkScene& work, std::int32_t surface)
{
    const int mesh = At(work.container.SurfaceLibrary, surface).GetGeometryID();
    return mesh >= 0 && !IsPinned(work.supplement, static_cast<std::size_t>(mesh)) &&
           HasTriangles(At(work.container.GeometryLibrary, mesh));
}

/// Takes the surfaces that cannot be judged out of the nodes, and puts them back when it is destroyed. One surface of a
/// shared mesh is judged for all of them.
class JudgedSurfaces
{
public:
    explicit JudgedSurfaces(const WorkScene& work) : nodes_(work.container.NodeLibrary)
    {
        std::set<int> met;
        for (Importing::Node& node : nodes_)
        {
            lists_.push_back(node.SurfaceList);
            std::erase_if(node.SurfaceList, [&](std::int32_t surface) {
                const int mesh = At(work.container.SurfaceLibrary, surface).GetGeometryID();
                return !CanBeJudged(work, surface) ||
                       (IsShared(work.supplement, static_cast<std::size_t>(mesh)) && !met.insert(mesh).second);
            });
        }
    }
    ~JudgedSurfaces()
    {
        for (std::size_t node = 0; node < lists_.size(); ++node)
            nodes_[node].SurfaceList.swap(lists_[node]);
    }
    JudgedSurfaces(const JudgedSurfaces&) = delete;
    JudgedSurfaces& operator=(const JudgedSurfaces&) = delete;

private:
    std::vector<Importing::Node>& nodes_;
    std::vector<std::vector<std::int32_t>> lists_;
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

    const JudgedSurfaces judged(work);
    FlipFacesOfNodes(scene, walk, mirrored);
    scene.CheckFacesOrientation(root, At(scene.NodeLibrary, root).GetLocalTransform().GetMatrix());
    FlipFacesOfNodes(scene, walk, mirrored);
    changes.push_back({"meshes flipped", winding.CountFlipped(scene)});
    return changes;
}

}  // namespace Pipeline
