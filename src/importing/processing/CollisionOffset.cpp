#include <importing/base/CheckedAccess.h>
#include <importing/math/Box.h>
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
    Box worldBox;
};

/// In visiting order: by nodes, then by their lists.
class ListingCollector
{
public:
    explicit ListingCollector(SceneContainer& scene)
        : scene_(scene), worldMatrices_(scene), localBoxes_(scene.GeometryLibrary.size())
    {}

    std::vector<Listing> Collect()
    {
        std::vector<Listing> listings;
        for (std::size_t node = 0; node < scene_.NodeLibrary.size(); ++node)
            for (const std::int32_t surface : scene_.NodeLibrary[node].SurfaceList)
                listings.push_back({surface, WorldBox(surface, static_cast<int>(node))});
        return listings;
    }

private:
    Box WorldBox(std::int32_t surface, int node)
    {
        const Box& local = LocalBox(At(scene_.SurfaceLibrary, surface).GetGeometryID());
        Box world = EmptyBox();
        Extend(world, local, worldMatrices_.Of(node));
        return world;
    }

    const Box& LocalBox(int geometry)
    {
        std::optional<Box>& box = At(localBoxes_, geometry);
        if (!box)
        {
            box.emplace();
            At(scene_.GeometryLibrary, geometry).GetBoundingBox(box->min, box->max);
        }
        return *box;
    }

    SceneContainer& scene_;
    WorldMatrices worldMatrices_;
    std::vector<std::optional<Box>> localBoxes_;
};

std::vector<Box> BoxesOf(const std::vector<Listing>& listings)
{
    std::vector<Box> boxes;
    boxes.reserve(listings.size());
    for (const Listing& listing : listings)
        boxes.push_back(listing.worldBox);
    return boxes;
}

/// Raises the other surface where it shares the current one's offset; offsets are read at this moment.
void RaiseIfEqual(SceneContainer& scene, std::int32_t current, std::int32_t other)
{
    Surface& raised = At(scene.SurfaceLibrary, other);
    if (current != other && At(scene.SurfaceLibrary, current).GetCollisionOffset() == raised.GetCollisionOffset())
        raised.SetCollisionOffset(raised.GetCollisionOffset() + 1);
}

}  // namespace

int SceneContainer::CalculateSurfaceCollisionOffset()
{
    const std::vector<Listing> listings = ListingCollector(*this).Collect();

    for (Surface& surface : SurfaceLibrary)
        surface.SetCollisionOffset(0);

    OverlapQuery query(BoxesOf(listings));
    std::vector<std::uint32_t> overlapping;
    for (const Listing& current : listings)
    {
        query.Find(current.worldBox, overlapping);
        for (const std::uint32_t other : overlapping)
            RaiseIfEqual(*this, current.surface, listings[other].surface);
    }
    return 0;
}

}  // namespace Importing
