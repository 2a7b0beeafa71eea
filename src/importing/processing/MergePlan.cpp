// The literal search compares every base with every later surface, map by map, which is quadratic. Here every surface
// is entered once into a tree of map hashes; surfaces that end at the same node of the tree form a group and may merge.
// Within a group each surface either joins the current base or is refused by it and becomes the next base, so one pass
// over each group plays the whole merge through, on vertex and index counts alone.
//
// The literal search also computes the hashes of the maps that it compares, and which hashes are valid afterwards is
// part of the result. So the plan includes for every surface the number of maps that the literal search compares: the
// nodes of the tree record how far bases below them have searched. Cost: linear in surfaces and maps, on average.

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

/// Returns the content hash of a map without changing the map's cached hash.
std::uint32_t HashOf(const Map& map)
{
    if (ForReading(map).GetIsHashCodeValid())
        return ForReading(map).GetHash();
    return Map(map).GetHash();
}

/// A tree of map hashes. Surfaces with the same material and number of maps share a top node, surfaces whose first k
/// maps are equal share the next k nodes, and surfaces that may merge share all nodes of their path.
class MapTree
{
public:
    /// Appends the path of a surface: its nodes from the top down.
    void AppendPath(const Surface& surface, std::vector<std::uint32_t>& path)
    {
        const auto material = static_cast<std::uint32_t>(surface.GetMaterialID());
        const auto maps = static_cast<std::uint32_t>(surface.MapList.size());
        std::uint32_t node = Below(kNothing, static_cast<std::uint64_t>(material) << 32U | maps);
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
            const std::uint64_t product =
                (edge.label ^ (static_cast<std::uint64_t>(edge.from) << 17U)) * 0x9E3779B97F4A7C15ULL;
            // The low bits must depend on the high bits of the label.
            return static_cast<std::size_t>(product ^ (product >> 32U));
        }
    };

    std::uint32_t Below(std::uint32_t from, std::uint64_t label)
    {
        return nodes_.try_emplace(Edge{label, from}, static_cast<std::uint32_t>(nodes_.size())).first->second;
    }

    std::unordered_map<Edge, std::uint32_t, EdgeHash> nodes_;
};

/// Groups surfaces by material and maps, and counts the maps that the literal search compares. That search compares a
/// surface with each earlier base of the same material and number of maps, if the base searches as far as the surface,
/// map by map up to the first difference.
class MapComparison
{
public:
    /// Adds the surface of the next position. Returns its group: the surfaces with the same material and maps.
    std::uint32_t Enter(const Surface& surface)
    {
        begins_.push_back(static_cast<std::uint32_t>(paths_.size()));
        tree_.AppendPath(surface, paths_);
        return paths_.back();
    }

    /// Returns how many of the surface's maps are compared. Call it in list order, before the position becomes a base.
    std::size_t ComparedMaps(Position position)
    {
        reaches_.resize(tree_.Size());
        std::uint32_t next = Begin(position);
        while (next < End(position) && reaches_[paths_[next]] > position)
            ++next;
        return std::min(next - Begin(position), End(position) - Begin(position) - 1);
    }

    /// Records that a base searched the positions below `end`.
    void NoteSearch(Position base, Position end)
    {
        for (std::uint32_t i = Begin(base); i < End(base); ++i)
            reaches_[paths_[i]] = std::max(reaches_[paths_[i]], end);
    }

private:
    std::uint32_t Begin(Position position) const { return begins_[position]; }
    std::uint32_t End(Position position) const
    {
        return position + 1 < begins_.size() ? begins_[position + 1] : static_cast<std::uint32_t>(paths_.size());
    }

    MapTree tree_;
    std::vector<std::uint32_t> paths_;   ///< the paths of all positions, one after the other
    std::vector<std::uint32_t> begins_;  ///< position -> the beginning of its path
    std::vector<Position> reaches_;      ///< node of the tree -> end of the positions that bases below it searched
};

/// The data of a listed surface that planning needs.
struct Entry
{
    int material = -1;
    int geometry = -1;
    std::uint32_t mesh = kNothing;  ///< the number of its mesh among those of the list; kNothing for a bad mesh index
    int materialCount = 0;          ///< the number of surfaces of the list that use the material
    Position nextInGroup = 0;  ///< the next surface that may merge with it; the length of the list if there is none
};

/// The size of a mesh at some point of the merge.
struct MeshSize
{
    std::uint64_t vertices;
    std::uint64_t indices;
    std::uint64_t polySize;
};

/// Simulates the merge on the sizes of the meshes.
class Planner
{
public:
    Planner(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
            const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices)
        : minSurfaces_(minSurfaces), vertexLimit_(static_cast<std::uint64_t>(static_cast<std::int64_t>(maxVertices)))
    {
        ReadSurfaces(list, surfaces);
        ReadMeshes(geometries);
        ChainGroups(list, surfaces);
    }

    MergePlan Run()
    {
        MergePlan plan;
        std::vector<bool> hasJoined(entries_.size());
        for (Position base = 0; base < entries_.size(); ++base)
        {
            if (ComparesMaps())
                plan.comparedMaps.push_back(comparison_.ComparedMaps(base));
            if (hasJoined[base] || !MayBeBase(entries_[base]))
                continue;
            Merge merge = Search(base);
            for (const Position joining : merge.joining)
                hasJoined[joining] = true;
            const bool hadCandidate = entries_[base].nextInGroup < entries_.size();
            if (hadCandidate)
                plan.merges.push_back(std::move(merge));
        }
        return plan;
    }

private:
    /// Returns whether material and maps are compared: only with a minimum above 0.
    bool ComparesMaps() const { return minSurfaces_ > 0; }

    void ReadSurfaces(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces)
    {
        std::unordered_map<int, int> countOf;
        entries_.reserve(list.size());
        for (const std::int32_t index : list)
        {
            const Surface& surface = At(surfaces, index);
            Entry& entry = entries_.emplace_back();
            entry.material = surface.GetMaterialID();
            entry.geometry = surface.GetGeometryID();
            ++countOf[entry.material];
        }
        for (Entry& entry : entries_)
            entry.materialCount = countOf[entry.material];
    }

    /// Reads the sizes of the meshes of the list. Other meshes are not read, so a small merge costs little in a large
    /// library.
    void ReadMeshes(const std::vector<Geometry>& geometries)
    {
        std::unordered_map<int, std::uint32_t> meshOf;
        meshOf.reserve(entries_.size());
        for (Entry& entry : entries_)
        {
            if (!IsValidIndex(entry.geometry, geometries.size()))
                continue;
            const auto [known, isNew] = meshOf.try_emplace(entry.geometry, static_cast<std::uint32_t>(meshes_.size()));
            entry.mesh = known->second;
            const Geometry& geometry = geometries[static_cast<std::size_t>(entry.geometry)];
            if (isNew)
                meshes_.push_back({geometry.VertexArray.size(), geometry.IndexArray.size(), geometry.GetPolySize()});
        }
    }

    /// Links the positions of each group. Without comparison all surfaces are one group.
    void ChainGroups(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces)
    {
        std::unordered_map<std::uint32_t, Position> lastOfGroup;
        for (Position i = 0; i < entries_.size(); ++i)
        {
            entries_[i].nextInGroup = entries_.size();
            const std::uint32_t group = ComparesMaps() ? comparison_.Enter(At(surfaces, list[i])) : 0;
            const auto [last, isFirst] = lastOfGroup.try_emplace(group, i);
            if (!isFirst)
                entries_[std::exchange(last->second, i)].nextInGroup = i;
        }
    }

    /// Returns whether other surfaces may join the surface.
    bool MayBeBase(const Entry& entry) const
    {
        const bool isAlone = minSurfaces_ != 0 && entry.materialCount == 1;
        return !isAlone && entry.materialCount >= minSurfaces_;
    }

    /// Returns the merge of a base with the following surfaces of its group. All of them are still listed, because
    /// earlier bases of the group took only surfaces before this base.
    Merge Search(Position base)
    {
        Merge merge;
        merge.geometry = entries_[base].geometry;
        Position searched = entries_.size();
        int merges = 0;
        for (Position candidate = entries_[base].nextInGroup; candidate < entries_.size();
             candidate = entries_[candidate].nextInGroup)
        {
            if (!Join(merge, entries_[base], candidate))
            {
                searched = candidate + 1;
                break;
            }
            ++merges;
            if (minSurfaces_ != 0 && entries_[base].materialCount == merges - 1)
                break;  // Possible only with a minimum below 0, where no maps are compared.
        }
        if (ComparesMaps())
            comparison_.NoteSearch(base, searched);
        return merge;
    }

    /// Adds a candidate to a merge. Returns false if the merged mesh would exceed the vertex limit.
    bool Join(Merge& merge, const Entry& base, Position candidate)
    {
        MeshSize& to = At(meshes_, base.mesh);
        MeshSize& from = At(meshes_, entries_[candidate].mesh);
        if (to.vertices + from.vertices > vertexLimit_)
            return false;

        // A mesh of another poly size is refused by Append but still emptied.
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

    int minSurfaces_;
    std::uint64_t vertexLimit_;
    std::vector<Entry> entries_;    ///< one for each position
    std::vector<MeshSize> meshes_;  ///< one for each mesh of the list
    MapComparison comparison_;
};

}  // namespace

MergePlan PlanMerges(const std::vector<std::int32_t>& list, const std::vector<Surface>& surfaces,
                     const std::vector<Geometry>& geometries, int minSurfaces, int maxVertices)
{
    return Planner(list, surfaces, geometries, minSurfaces, maxVertices).Run();
}

}  // namespace Importing
