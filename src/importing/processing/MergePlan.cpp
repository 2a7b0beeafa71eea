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

/// What the planning needs of a listed surface, read once.
struct Entry
{
    const Surface* surface;
    int material;
    int geometry;
    int materialCount;        ///< surfaces of the list that use the material
    std::uint32_t pathBegin;  ///< where its path in the tree of maps lies among all paths
    std::uint32_t pathEnd;
};

/// A tree of map hashes: surfaces with one material and one number of maps share a top node, surfaces whose first k
/// maps are equal the k nodes below it, and surfaces that may merge the last one.
class MapTree
{
public:
    /// Appends the nodes of a surface, from the top down.
    void AppendPath(const Surface& surface, int material, std::vector<std::uint32_t>& path)
    {
        const std::uint64_t kind = static_cast<std::uint64_t>(static_cast<std::uint32_t>(material)) << 32U;
        std::uint32_t node = Below(kNothing, kind | static_cast<std::uint32_t>(surface.MapList.size()));
        path.push_back(node);
        for (const Map& map : surface.MapList)
        {
            node = Below(node, HashOf(map));
            path.push_back(node);
        }
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

    std::uint32_t Below(std::uint32_t from, std::uint64_t label)
    {
        return nodes_.try_emplace(Edge{label, from}, static_cast<std::uint32_t>(nodes_.size())).first->second;
    }

    std::unordered_map<Edge, std::uint32_t, EdgeHash> nodes_;
};

/// The size of a mesh at some point of the merging.
struct MeshSize
{
    std::uint64_t vertices;
    std::uint64_t indices;
    std::uint64_t polySize;
};

/// Plays the merging through on the sizes of the meshes.
class Planner
{
public:
    Planner(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
            const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices)
        : minSurfaces_(minSurfaces), vertexLimit_(static_cast<std::uint64_t>(static_cast<std::int64_t>(maxVertices)))
    {
        ReadSurfaces(list, surfaces);
        ReadSizes(geometries);
        ChainGroups();
    }

    MergePlan Run()
    {
        std::vector<bool> hasJoined(entries_.size());
        plan_.comparedMaps.assign(ComparesMaps() ? entries_.size() : 0, 0);
        lastReach_.assign(tree_.Size(), 0);
        for (Position base = 0; base < entries_.size(); ++base)
        {
            if (ComparesMaps())
                NoteComparedMaps(base);
            if (hasJoined[base] || !MayBeBase(base))
                continue;
            Merge merge = Search(base);
            for (const Position joining : merge.joining)
                hasJoined[joining] = true;
            if (ComparesMaps())
                NoteReach(base, merge.reach);
            const bool hadCandidate = nextInGroup_[base] < entries_.size();
            if (hadCandidate)
                plan_.merges.push_back(std::move(merge));
        }
        return std::move(plan_);
    }

private:
    /// Above 0 the number also switches the comparison of material and maps on.
    bool ComparesMaps() const { return minSurfaces_ > 0; }

    void ReadSurfaces(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces)
    {
        std::unordered_map<int, int> countOf;
        entries_.reserve(list.size());
        for (const std::int32_t index : list)
        {
            const Surface& surface = At(surfaces, index);
            entries_.push_back({&surface, surface.GetMaterialID(), surface.GetGeometryID(), 0, 0, 0});
            ++countOf[surface.GetMaterialID()];
        }
        for (Entry& entry : entries_)
            entry.materialCount = countOf[entry.material];
    }

    void ReadSizes(const std::vector<Geometry>& geometries)
    {
        sizes_.reserve(geometries.size());
        for (const Geometry& geometry : geometries)
            sizes_.push_back({geometry.VertexArray.size(), geometry.IndexArray.size(), geometry.GetPolySize()});
    }

    /// Chains the positions of each group; without comparison all surfaces are one group.
    void ChainGroups()
    {
        nextInGroup_.assign(entries_.size(), entries_.size());
        std::unordered_map<std::uint32_t, Position> lastOfGroup;
        for (Position i = 0; i < entries_.size(); ++i)
        {
            const auto [last, isFirst] = lastOfGroup.try_emplace(ComparesMaps() ? EnterIntoTree(entries_[i]) : 0, i);
            if (!isFirst)
                nextInGroup_[std::exchange(last->second, i)] = i;
        }
    }

    /// @return the last node of the surface's path.
    std::uint32_t EnterIntoTree(Entry& entry)
    {
        entry.pathBegin = static_cast<std::uint32_t>(paths_.size());
        tree_.AppendPath(*entry.surface, entry.material, paths_);
        entry.pathEnd = static_cast<std::uint32_t>(paths_.size());
        return paths_.back();
    }

    bool MayBeBase(Position position) const
    {
        const int count = entries_[position].materialCount;
        return !(minSurfaces_ != 0 && count == 1) && count >= minSurfaces_;
    }

    /// Every surface of the group behind a base is still listed: those before it took a run that ends before it.
    Merge Search(Position base)
    {
        Merge merge{base, entries_[base].geometry, {}, {}, entries_.size(), 0, 0};
        const int count = entries_[base].materialCount;
        int merges = 0;
        for (Position candidate = nextInGroup_[base]; candidate < entries_.size(); candidate = nextInGroup_[candidate])
        {
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
        MeshSize& to = At(sizes_, merge.geometry);
        MeshSize& from = At(sizes_, entries_[candidate].geometry);
        if (to.vertices + from.vertices > vertexLimit_)
            return false;

        // Meshes of another poly size are refused by Append and emptied all the same.
        if (to.polySize == from.polySize)
        {
            to.vertices += from.vertices;
            to.indices += from.indices;
        }
        merge.joining.push_back(candidate);
        merge.joiningGeometries.push_back(entries_[candidate].geometry);
        merge.vertexCount = std::max<std::size_t>(merge.vertexCount, to.vertices);
        merge.indexCount = std::max<std::size_t>(merge.indexCount, to.indices);
        from.vertices = 0;
        from.indices = 0;
        return true;
    }

    /// A surface is compared with each earlier base of its material and number of maps that searches as far as it, map
    /// by map up to the first difference.
    void NoteComparedMaps(Position position)
    {
        const Entry& entry = entries_[position];
        std::uint32_t next = entry.pathBegin;
        while (next < entry.pathEnd && lastReach_[paths_[next]] > position)
            ++next;
        plan_.comparedMaps[position] = std::min(next - entry.pathBegin, entry.pathEnd - entry.pathBegin - 1);
    }

    void NoteReach(Position base, Position reach)
    {
        for (std::uint32_t i = entries_[base].pathBegin; i < entries_[base].pathEnd; ++i)
            lastReach_[paths_[i]] = std::max(lastReach_[paths_[i]], reach + 1);
    }

    int minSurfaces_;
    std::uint64_t vertexLimit_;

    std::vector<Entry> entries_;   ///< one a position
    std::vector<MeshSize> sizes_;  ///< geometry -> its size at this point of the merging
    MapTree tree_;
    std::vector<std::uint32_t> paths_;   ///< the paths of all positions
    std::vector<Position> nextInGroup_;  ///< position -> the next one that may merge with it
    std::vector<Position> lastReach_;    ///< node of the tree -> one behind the furthest position that a base reached
    MergePlan plan_;
};

}  // namespace

MergePlan PlanMerges(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
                     const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices)
{
    return Planner(list, surfaces, geometries, minSurfaces, maxVertices).Run();
}

}  // namespace Importing
