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

/// A surface where a node lists it.
struct Listing
{
    std::int32_t surface;
    std::int32_t geometry;
    std::int32_t node;
};

/// In visiting order: by nodes, then by their lists. Checks what they refer to.
std::vector<Listing> ListingsOf(const SceneContainer& scene)
{
    std::vector<Listing> listings;
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
    {
        for (const std::int32_t surface : scene.NodeLibrary[node].SurfaceList)
        {
            const int geometry = At(scene.SurfaceLibrary, surface).GetGeometryID();
            CheckIndex(geometry, scene.GeometryLibrary.size());
            listings.push_back({surface, geometry, static_cast<std::int32_t>(node)});
        }
    }
    return listings;
}

/// Asks for the matrices in the order in which the pass over all pairs meets the nodes: for the first listing, for all
/// that it is compared with, and last for those where its own surface is listed again.
void AskForMatrices(WorldMatrices& matrices, const std::vector<Listing>& listings)
{
    if (listings.empty())
        return;
    const Listing& first = listings.front();
    matrices.Of(first.node);
    for (const Listing& listing : listings)
        if (listing.surface != first.surface)
            matrices.Of(listing.node);
    for (const Listing& listing : listings)
        matrices.Of(listing.node);
}

std::vector<Box> WorldBoxes(SceneContainer& scene, const std::vector<Listing>& listings)
{
    WorldMatrices matrices(scene);
    AskForMatrices(matrices, listings);

    std::vector<std::optional<Box>> localBoxes(scene.GeometryLibrary.size());
    std::vector<Box> worldBoxes;
    worldBoxes.reserve(listings.size());
    for (const Listing& listing : listings)
    {
        std::optional<Box>& local = At(localBoxes, listing.geometry);
        if (!local)
        {
            local.emplace();
            At(scene.GeometryLibrary, listing.geometry).GetBoundingBox(local->min, local->max);
        }
        worldBoxes.push_back(EmptyBox());
        Extend(worldBoxes.back(), *local, matrices.Of(listing.node));
    }
    return worldBoxes;
}

void SetOffsets(SceneContainer& scene, const std::vector<int>& offsets)
{
    for (std::size_t surface = 0; surface < offsets.size(); ++surface)
        At(scene.SurfaceLibrary, surface).SetCollisionOffset(offsets[surface]);
}

/// Of each overlapping pair with equal offsets, read at this moment, the other surface is raised.
void RaiseOverlapping(std::vector<int>& offsets, const std::vector<Listing>& listings, const std::vector<Box>& boxes)
{
    OverlapQuery query(boxes);
    std::vector<std::uint32_t> overlapping;
    for (std::size_t i = 0; i < listings.size(); ++i)
    {
        query.Find(boxes[i], overlapping);
        const std::int32_t current = listings[i].surface;
        const int offset = offsets[static_cast<std::size_t>(current)];
        for (const std::uint32_t candidate : overlapping)
        {
            const std::int32_t other = listings[candidate].surface;
            int& raised = offsets[static_cast<std::size_t>(other)];
            if (other != current && raised == offset)
                ++raised;
        }
    }
}

}  // namespace

int SceneContainer::CalculateSurfaceCollisionOffset()
{
    const std::vector<Listing> listings = ListingsOf(*this);
    std::vector<int> offsets(SurfaceLibrary.size(), 0);
    // An override that is asked for a matrix finds the offsets reset. In a plain container nothing changes until a
    // cycle has been ruled out.
    if (!IsPlain(*this))
        SetOffsets(*this, offsets);

    RaiseOverlapping(offsets, listings, WorldBoxes(*this, listings));
    SetOffsets(*this, offsets);
    return 0;
}

}  // namespace Importing
