// The literal pass compares every ordered pair of references and transforms eight corners for each, which is quadratic.
// The world boxes do not change during the pass, so here each is computed once, and OverlapQuery finds the boxes that
// overlap the current one, in list order. The order matters, because offsets are read at the moment of comparison.
// Cost: n log n in the references plus the overlapping pairs, for boxes that are spread out.

#include <importing/base/CheckedAccess.h>
#include <importing/math/Box.h>
#include <importing/plugin/PlainContainer.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/processing/OverlapQuery.h>
#include <importing/processing/WorldMatrices.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace Importing
{
namespace
{

/// A reference of a node to a surface.
struct Reference
{
    std::int32_t surface;
    std::int32_t geometry;
    std::int32_t node;
};

/// Returns all references in visiting order, by nodes and then by their lists, after checking their indices.
std::vector<Reference> ReferencesOf(const SceneContainer& scene)
{
    std::vector<Reference> references;
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
    {
        for (const std::int32_t surface : scene.NodeLibrary[node].SurfaceList)
        {
            const int geometry = At(scene.SurfaceLibrary, surface).GetGeometryID();
            CheckIndex(geometry, scene.GeometryLibrary.size());
            references.push_back({surface, geometry, static_cast<std::int32_t>(node)});
        }
    }
    return references;
}

/// Computes the matrices in the order in which the literal pass needs them, which overrides can observe: for the first
/// reference, for all that it is compared with, and then for other references to the same surface.
void ComputeMatrices(WorldMatrices& matrices, const std::vector<Reference>& references)
{
    if (references.empty())
        return;
    const Reference& first = references.front();
    matrices.Of(first.node);
    for (const Reference& reference : references)
        if (reference.surface != first.surface)
            matrices.Of(reference.node);
    for (const Reference& reference : references)
        matrices.Of(reference.node);
}

std::vector<Box> WorldBoxes(SceneContainer& scene, const std::vector<Reference>& references)
{
    WorldMatrices matrices(scene);
    ComputeMatrices(matrices, references);

    std::vector<std::optional<Box>> localBoxes(scene.GeometryLibrary.size());
    std::vector<Box> worldBoxes;
    worldBoxes.reserve(references.size());
    for (const Reference& reference : references)
    {
        std::optional<Box>& local = At(localBoxes, reference.geometry);
        if (!local)
        {
            local.emplace();
            At(scene.GeometryLibrary, reference.geometry).GetBoundingBox(local->min, local->max);
        }
        worldBoxes.push_back(EmptyBox());
        Extend(worldBoxes.back(), *local, matrices.Of(reference.node));
    }
    return worldBoxes;
}

void SetOffsets(SceneContainer& scene, const std::vector<int>& offsets)
{
    for (std::size_t surface = 0; surface < offsets.size(); ++surface)
        At(scene.SurfaceLibrary, surface).SetCollisionOffset(offsets[surface]);
}

/// Raises the other surface of each overlapping pair with equal offsets at the moment of comparison.
void RaiseOverlapping(std::vector<int>& offsets, const std::vector<Reference>& references,
                      const std::vector<Box>& boxes)
{
    OverlapQuery query(boxes);
    std::vector<std::uint32_t> overlapping;
    for (std::size_t i = 0; i < references.size(); ++i)
    {
        query.Find(boxes[i], overlapping);
        const std::int32_t current = references[i].surface;
        const int offset = offsets[static_cast<std::size_t>(current)];
        for (const std::uint32_t candidate : overlapping)
        {
            const std::int32_t other = references[candidate].surface;
            int& raised = offsets[static_cast<std::size_t>(other)];
            if (other != current && raised == offset)
                ++raised;
        }
    }
}

}  // namespace

int SceneContainer::CalculateSurfaceCollisionOffset()
{
    const std::vector<Reference> references = ReferencesOf(*this);
    std::vector<int> offsets(SurfaceLibrary.size(), 0);
    // An override of CalculateGlobalTM can observe that the offsets are reset. In a plain container nothing changes
    // until cycles have been ruled out.
    if (!IsPlain(*this))
        SetOffsets(*this, offsets);

    RaiseOverlapping(offsets, references, WorldBoxes(*this, references));
    SetOffsets(*this, offsets);
    return 0;
}

}  // namespace Importing
