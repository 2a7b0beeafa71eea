#pragma once

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Pipeline
{

/// A vertex attribute that is stored in texture coordinate sets: colours, tangents, custom attributes.
struct VertexAttribute
{
    std::string name = {};  ///< as in glTF: "COLOR_0", "TANGENT", "_TEMPERATURE"
    int firstSet = 0;       ///< the first of the sets that hold it
    int components = 0;     ///< two per set; if the number is odd, the second half of the last set is 0
    /// The type that the numbers had, in the host's code; 0 for floats, and where meshes of different types are merged.
    int numberType = 0;
    bool isNormalized = false;  ///< whether integers of that type stand for parts of the largest one

    friend bool operator==(const VertexAttribute&, const VertexAttribute&) = default;
};

/// What the texture coordinate sets of one mesh hold. The container's vertices have no place for further attributes,
/// but any number of sets; so attributes use the sets after the real ones, where welding compares and merging appends
/// them.
struct VertexLayout
{
    int texCoordSets = -1;  ///< how many sets are texture coordinates; -1: all of them
    std::vector<VertexAttribute> attributes = {};

    friend bool operator==(const VertexLayout&, const VertexLayout&) = default;
};

/// What a host knows about a scene in addition to what the container holds. Steps read it, and keep it consistent with
/// the libraries that they change. Lists may be shorter than their library: missing entries have the default.
struct SceneSupplement
{
    /// [geometries] Default: all sets are texture coordinates.
    std::vector<VertexLayout> layouts = {};
    /// [geometries] Meshes that no step may weld, merge, bake or recompute: morph targets, points, lines. They stay on
    /// a node with their world matrix. Default: false.
    std::vector<bool> pinnedMeshes = {};
    /// [geometries] Meshes that several surfaces go on sharing: no step may bake a matrix into them, flip or merge
    /// them. Set by ResolveInstances(). Default: false.
    std::vector<bool> sharedMeshes = {};
    /// [nodes] Nodes that stay in the hierarchy, as animated nodes do, and also where animation is ignored: joints,
    /// targets of animations that the container does not hold, hidden nodes. The root stays in any case. Default:
    /// false.
    std::vector<bool> keptNodes = {};
    /// [nodes] Nodes that stay as they are, with their surfaces. All nodes below a frozen node are frozen. Default:
    /// false.
    std::vector<bool> frozenNodes = {};
    /// [nodes] The key of each node in the host's own tables; -1 for nodes that steps have added. Default: -1.
    std::vector<int> nodeKeys = {};
    /// [geometries] The key of each mesh in the host's own tables. A copy has the key of its original. Default: -1.
    std::vector<int> meshKeys = {};
    /// The keys of the meshes that steps have merged into others, in no order. Several copies of a mesh have one key
    /// each.
    std::vector<int> mergedMeshKeys = {};
};

/// Returns the entry at an index; the default if the list is shorter.
template <typename List, typename Default>
auto EntryOr(const List& list, std::size_t index, Default whereMissing)
{
    return index < list.size() ? static_cast<Default>(list[index]) : whereMissing;
}

/// Returns whether no step may change the mesh.
inline bool IsPinned(const SceneSupplement& supplement, std::size_t geometry)
{
    return EntryOr(supplement.pinnedMeshes, geometry, false);
}

/// Returns whether the node stays as it is, with its surfaces.
inline bool IsFrozen(const SceneSupplement& supplement, std::size_t node)
{
    return EntryOr(supplement.frozenNodes, node, false);
}

/// Returns whether several surfaces go on sharing the mesh.
inline bool IsShared(const SceneSupplement& supplement, std::size_t geometry)
{
    return EntryOr(supplement.sharedMeshes, geometry, false);
}

/// Returns whether the node stays in the hierarchy.
inline bool IsKept(const SceneSupplement& supplement, std::size_t node)
{
    return EntryOr(supplement.keptNodes, node, false) || IsFrozen(supplement, node);
}

/// Copies the entries of a mesh to a new mesh that is a copy of it.
inline void CopyMeshEntries(SceneSupplement& supplement, std::size_t from, std::size_t to)
{
    const auto copy = [from, to](auto& list, auto whereMissing) {
        if (from >= list.size())
            return;
        if (to >= list.size())
            list.resize(to + 1, whereMissing);
        list[to] = list[from];
    };
    copy(supplement.layouts, VertexLayout());
    copy(supplement.pinnedMeshes, false);
    copy(supplement.meshKeys, -1);
}

/// Moves the entries of nodes to the new indices of the nodes.
/// @param origins  [nodes, as they are now] the index that each node had before; -1 for nodes that are new
inline void MoveNodeEntries(SceneSupplement& supplement, const std::vector<int>& origins)
{
    const auto move = [&origins](auto& list, auto whereMissing) {
        if (list.empty())
            return;
        std::remove_reference_t<decltype(list)> moved;
        moved.reserve(origins.size());
        for (const int origin : origins)
            moved.push_back(origin < 0 ? whereMissing : EntryOr(list, static_cast<std::size_t>(origin), whereMissing));
        list = std::move(moved);
    };
    move(supplement.keptNodes, false);
    move(supplement.frozenNodes, false);
    move(supplement.nodeKeys, -1);
}

}  // namespace Pipeline
