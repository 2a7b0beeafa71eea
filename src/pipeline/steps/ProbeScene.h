#pragma once

#include <pipeline/scene/Hierarchy.h>

#include <cstddef>
#include <vector>

namespace Pipeline
{

/// A stand-in for a sub-tree of a scene, to see what an operation would do: the same nodes without animation and
/// objects, each with a small mesh of its own.
class ProbeScene
{
public:
    /// @param start  where in the walk's order the sub-tree's uppermost node stands; it becomes node 0 of the probe
    ProbeScene(Importing::SceneContainer& scene, const NodeWalk& walk, std::size_t start);

    /// The scene to try the operation on.
    Importing::SceneContainer& Scene() { return probe_; }

    /// @return whether all meshes still lie where they lay in the beginning, to a ten-thousandth of their size and
    ///         distance.
    bool LiesAsBefore();

private:
    void AddNode(const Importing::Transform& transform);
    std::vector<D3DXVECTOR3> WorldCorners();

    Importing::SceneContainer probe_;
    std::vector<D3DXVECTOR3> before_;
};

}  // namespace Pipeline
