#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/records/Surface.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Importing
{

/// The mesh of a base surface and the surfaces that join it.
struct Merge
{
    int geometry = -1;
    std::vector<std::size_t> joining;    ///< positions in the list, in order; empty if the first candidate did not fit
    std::vector<int> joiningGeometries;  ///< the meshes of those surfaces
    std::size_t vertexCount = 0;         ///< the largest vertex count of the merged mesh during the merge
    std::size_t indexCount = 0;          ///< the largest index count of the merged mesh during the merge
};

/// The merges of one list of surfaces.
///
/// A base with no candidate is not part of `merges`; a base that refused its first candidate is.
struct MergePlan
{
    std::vector<Merge> merges;
    /// By position: how many of the surface's maps the literal search compares; empty if it compares no maps.
    std::vector<std::size_t> comparedMaps;
};

/// Plans SceneContainer::MergeSurfaces for one list of surfaces, without changing anything: simulates it on vertex and
/// index counts.
///
/// Cost: linear in the list and the maps of its surfaces, on average.
/// @throws std::out_of_range when a surface index, or a mesh index that the merge looks up, is bad.
MergePlan PlanMerges(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
                     const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices);

}  // namespace Importing
