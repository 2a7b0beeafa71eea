#include <importing/processing/MergePlan.h>

#include <importing/base/CheckedAccess.h>
#include <importing/base/ForReading.h>

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

namespace Importing
{
namespace
{

using Position = std::size_t;

constexpr std::uint32_t kNothing = std::numeric_limits<std::uint32_t>::max();

/// The content hash of a map, computed without leaving a trace in the map.
std::uint32_t HashOf(const Map& map)
{
    if (ForReading(map).GetIsHashCodeValid())
        return ForReading(map).GetHash();
    return Map(map).GetHash();
}

/// A tree of map hashes: surfaces with one material and one number of maps share a top node, surfaces whose first k
/// maps are equal the k nodes below it, and surfaces that may merge a leaf.
class MapTree
{
public:
    /// @return the nodes from the top down to the leaf.
    std::vector<std::uint32_t> PathOf(const Surface& surface)
    {
        std::uint32_t node = Below(kNothing, PairOf(static_cast<std::uint32_t>(surface.GetMaterialID()),
                                                    static_cast<std::uint32_t>(surface.MapList.size())));
        std::vector<std::uint32_t> path{node};
        for (const Map& map : surface.MapList)
        {
            node = Below(node, HashOf(map));
            path.push_back(node);
        }
        return path;
    }

    std::size_t Size() const { return nodes_.size(); }

private:
    struct Edge
    {
        std::uint64_t label;
        std::uint32_t from;
        bool operator==(const Edge&) const = default;
    };
    struct EdgeHash
    {
        std::size_t operator()(const Edge& edge) const
        {
            return (edge.label ^ (static_cast<std::uint64_t>(edge.from) << 17U)) * 0x9E3779B97F4A7C15ULL;
        }
    };

    static std::uint64_t PairOf(std::uint32_t high, std::uint32_t low)
    {
        return static_cast<std::uint64_t>(high) << 32U | low;
    }

    std::uint32_t Below(std::uint32_t from, std::uint64_t label)
    {
        return nodes_.try_emplace(Edge{label, from}, static_cast<std::uint32_t>(nodes_.size())).first->second;
    }

    std::unordered_map<Edge, std::uint32_t, EdgeHash> nodes_;
};

/// Plays the merging through on the sizes of the meshes.
class Planner
{
public:
    Planner(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
            const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices)
        : list_(list), surfaces_(surfaces), geometries_(geometries), minSurfaces_(minSurfaces),
          vertexLimit_(static_cast<std::uint64_t>(static_cast<std::int64_t>(maxVertices)))
    {}

    MergePlan Run()
    {
        CountMaterials();
        SortIntoGroups();
        ReadSizes();

        std::vector<bool> hasJoined(list_.size());
        plan_.comparedMaps.assign(list_.size(), 0);
        lastReach_.assign(tree_.Size(), 0);
        for (Position base = 0; base < list_.size(); ++base)
        {
            if (ComparesMaps())
                NoteComparedMaps(base);
            if (hasJoined[base] || !MayBeBase(base))
                continue;
            const Merge merge = Search(base);
            for (const Position joining : merge.joining)
                hasJoined[joining] = true;
            if (ComparesMaps())
                NoteReach(base, merge.reach);
            if (hadCandidate_)
                plan_.merges.push_back(merge);
        }
        return std::move(plan_);
    }

private:
    const Surface& SurfaceAt(Position position) const { return At(surfaces_, list_[position]); }

    /// Above 0 the number also switches the comparison of material and maps on.
    bool ComparesMaps() const { return minSurfaces_ > 0; }

    void CountMaterials()
    {
        for (Position i = 0; i < list_.size(); ++i)
            ++countOf_[SurfaceAt(i).GetMaterialID()];
    }

    int CountAt(Position position) const { return countOf_.at(SurfaceAt(position).GetMaterialID()); }

    bool MayBeBase(Position position) const
    {
        const int count = CountAt(position);
        return !(minSurfaces_ != 0 && count == 1) && count >= minSurfaces_;
    }

    /// Chains the positions of each group; without comparison all surfaces are one group.
    void SortIntoGroups()
    {
        nextInGroup_.assign(list_.size(), list_.size());
        std::unordered_map<std::uint32_t, Position> lastOfGroup;
        for (Position i = 0; i < list_.size(); ++i)
        {
            std::uint32_t group = 0;
            if (ComparesMaps())
            {
                paths_.push_back(tree_.PathOf(SurfaceAt(i)));
                group = paths_.back().back();
            }
            const auto [last, isFirst] = lastOfGroup.try_emplace(group, i);
            if (!isFirst)
                nextInGroup_[std::exchange(last->second, i)] = i;
        }
    }

    void ReadSizes()
    {
        vertexCounts_.reserve(geometries_.size());
        indexCounts_.reserve(geometries_.size());
        for (const Geometry& geometry : geometries_)
        {
            vertexCounts_.push_back(geometry.VertexArray.size());
            indexCounts_.push_back(geometry.IndexArray.size());
        }
    }

    /// Every surface of the group behind a base is still listed: those before it took a run that ends before it.
    Merge Search(Position base)
    {
        Merge merge{base, {}, list_.size(), 0, 0};
        const int count = CountAt(base);
        hadCandidate_ = false;
        int merges = 0;
        for (Position candidate = nextInGroup_[base]; candidate < list_.size(); candidate = nextInGroup_[candidate])
        {
            hadCandidate_ = true;
            if (!Join(merge, candidate))
            {
                merge.reach = candidate;
                break;
            }
            ++merges;
            if (minSurfaces_ != 0 && count == merges - 1)
                break;
        }
        return merge;
    }

    /// @return false when the candidate would make the merged mesh too large.
    bool Join(Merge& merge, Position candidate)
    {
        const int to = SurfaceAt(merge.base).GetGeometryID();
        const int from = SurfaceAt(candidate).GetGeometryID();
        std::uint64_t& vertices = At(vertexCounts_, to);
        std::uint64_t& indices = At(indexCounts_, to);
        if (vertices + At(vertexCounts_, from) > vertexLimit_)
            return false;

        // Meshes of another poly size are refused by Append and emptied all the same.
        if (At(geometries_, to).GetPolySize() == At(geometries_, from).GetPolySize())
        {
            vertices += At(vertexCounts_, from);
            indices += At(indexCounts_, from);
        }
        merge.joining.push_back(candidate);
        merge.vertexCount = std::max<std::size_t>(merge.vertexCount, vertices);
        merge.indexCount = std::max<std::size_t>(merge.indexCount, indices);
        At(vertexCounts_, from) = 0;
        At(indexCounts_, from) = 0;
        return true;
    }

    /// A surface is compared with each earlier base of its material and number of maps that searches as far as it, map
    /// by map up to the first difference.
    void NoteComparedMaps(Position position)
    {
        const std::vector<std::uint32_t>& path = paths_[position];
        std::size_t depth = 0;
        while (depth < path.size() && lastReach_[path[depth]] > position)
            ++depth;
        plan_.comparedMaps[position] = std::min(depth, path.size() - 1);
    }

    void NoteReach(Position base, Position reach)
    {
        for (const std::uint32_t node : paths_[base])
            lastReach_[node] = std::max(lastReach_[node], reach + 1);
    }

    const std::vector<std::int32_t>& list_;
    const std::vector<Surface>& surfaces_;
    const std::vector<Geometry>& geometries_;
    int minSurfaces_;
    std::uint64_t vertexLimit_;

    std::unordered_map<int, int> countOf_;  ///< material -> surfaces of the list that use it
    MapTree tree_;
    std::vector<std::vector<std::uint32_t>> paths_;  ///< position -> its path in the tree
    std::vector<Position> nextInGroup_;              ///< position -> the next one that may merge with it
    std::vector<std::uint64_t> vertexCounts_;        ///< geometry -> its size at this point of the merging
    std::vector<std::uint64_t> indexCounts_;
    std::vector<Position> lastReach_;  ///< node of the tree -> one behind the furthest position that a base reached
    bool hadCandidate_ = false;
    MergePlan plan_;
};

}  // namespace

MergePlan PlanMerges(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
                     const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices)
{
    return Planner(list, surfaces, geometries, minSurfaces, maxVertices).Run();
}

}  // namespace Importing
