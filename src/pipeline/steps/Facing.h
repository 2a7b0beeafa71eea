#pragma once

#include <pipeline/scene/Hierarchy.h>

#include <cstdint>
#include <vector>

namespace Pipeline
{

/// Which way faces look.
///
/// Files are shown by viewers that turn the winding of what a matrix mirrors; the container's operations look at the
/// carried triangles as they are. Both agree where nothing is mirrored.

/// @return for each reached node [nodes] whether its world matrix mirrors.
std::vector<bool> FindMirroredNodes(Importing::SceneContainer& scene, const NodeWalk& walk);

/// Turns the winding of every mesh that the marked nodes list, once for each listing.
void TurnFacesOfNodes(Importing::SceneContainer& scene, const NodeWalk& walk, const std::vector<bool>& marked);

/// Remembers the winding of meshes and tells later which were turned as a whole since.
class WindingRecord
{
public:
    explicit WindingRecord(const Importing::SceneContainer& scene);

    /// @return whether the mesh's triangles have come to run the other way round.
    bool IsTurned(const Importing::SceneContainer& scene, int geometry) const;

    /// @return how many meshes are turned.
    std::size_t CountTurned(const Importing::SceneContainer& scene) const;

private:
    /// A triangle whose second and third corner differ; turning exchanges them.
    struct Witness
    {
        std::size_t secondCorner = 0;  ///< place in the index array
        std::uint32_t second = 0;
        bool found = false;
    };

    std::vector<Witness> witnesses_;
};

}  // namespace Pipeline
