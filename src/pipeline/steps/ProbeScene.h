#pragma once

#include <pipeline/scene/Hierarchy.h>

#include <cstddef>
#include <vector>

namespace Pipeline
{

/// A small copy of a branch of a scene, to find out what an operation would move: the same nodes without animations,
/// surfaces, cameras and lights, each with a small mesh.
class ProbeScene
{
public:
    /// @param start  position of the branch's top node in the order of the walk; it becomes node 0 of the probe
    ProbeScene(Importing::SceneContainer& scene, const NodeWalk& walk, std::size_t start);

    /// The copy, on which the operation is tried.
    Importing::SceneContainer& Scene() { return probe_; }

    /// Returns whether all meshes still have their initial world positions, to a ten-thousandth of their size and
    /// distance.
    bool HasInitialPositions();

private:
    void AddNode(const Importing::Transform& transform);
    std::vector<D3DXVECTOR3> WorldCorners();

    Importing::SceneContainer probe_;
    std::vector<D3DXVECTOR3> before_;
};

}  // namespace Pipeline
