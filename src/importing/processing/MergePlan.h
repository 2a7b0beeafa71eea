#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/records/Surface.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Importing
{

/// A base surface's mesh and what joins it.
struct Merge
{
    int geometry = -1;
    std::vector<std::size_t> joining;    ///< positions in the list, in order; empty when the first one did not fit
    std::vector<int> joiningGeometries;  ///< the meshes of those surfaces
    std::size_t vertexCount = 0;         ///< the largest that the merged mesh gets
    std::size_t indexCount = 0;
};

/// Which surfaces merge, found without changing anything.
///
/// Bases that had no candidate at all are left out of merges, those that had one and refused it are not.
struct MergePlan
{
    std::vector<Merge> merges;
    /// By position: how many of the surface's maps were compared; empty when none were, on any.
    std::vector<std::size_t> comparedMaps;
};

/// Follows SceneContainer::MergeSurfaces for one list of surfaces, event by event, on vertex counts alone.
///
/// The literal search compares every base with every later surface. Here surfaces are sorted into groups of equal
/// material and maps once; of a group each surface joins or refuses the base before it, so the search is linear in the
/// list. What the literal search would have compared is worked out all the same, because comparing maps computes
/// their hashes.
///
/// @throws std::out_of_range when a surface index, or a geometry index that the merging looks up, is bad.
MergePlan PlanMerges(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
                     const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices);

}  // namespace Importing
