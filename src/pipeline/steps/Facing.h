#pragma once

#include <pipeline/scene/Hierarchy.h>

#include <cstdint>
#include <vector>

namespace Pipeline
{

/// The orientation of faces.
///
/// Viewers flip the winding of a mesh whose world matrix mirrors. The operations of the container take the triangles in
/// world space as they are. The two agree where no matrix mirrors.

/// Returns for each reached node [nodes] whether its world matrix mirrors.
std::vector<bool> FindMirroredNodes(Importing::SceneContainer& scene, const NodeWalk& walk);

/// Flips the winding of every mesh that the marked nodes reference, once for each reference.
void FlipFacesOfNodes(Importing::SceneContainer& scene, const NodeWalk& walk, const std::vector<bool>& marked);

/// Records the winding of meshes, to find the meshes that have been flipped since.
class WindingRecord
{
public:
    explicit WindingRecord(const Importing::SceneContainer& scene);

    /// Returns true if the winding of the mesh has been flipped.
    bool IsFlipped(const Importing::SceneContainer& scene, int geometry) const;

    /// Returns the number of meshes whose winding has been flipped.
    std::size_t CountFlipped(const Importing::SceneContainer& scene) const;

private:
    /// The first triangle whose second and third corner differ. Flipping exchanges these two corners.
    struct Witness
    {
        std::size_t secondCorner = 0;  ///< position in the index array
        std::uint32_t second = 0;
        bool found = false;
    };

    std::vector<Witness> witnesses_;
};

}  // namespace Pipeline
