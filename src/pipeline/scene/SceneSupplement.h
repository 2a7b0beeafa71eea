#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Pipeline
{

/// A vertex attribute that travels in texture coordinate sets: colours, tangents, custom attributes.
struct VertexAttribute
{
    std::string name = {};  ///< as in glTF: "COLOR_0", "TANGENT", "_TEMPERATURE"
    int firstSet = 0;       ///< the first of the sets that hold it
    int components = 0;     ///< two a set; the second half of the last set is 0 where the number is odd

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
    /// [nodes] Nodes that stay in the hierarchy, with everything below them, as animated nodes do: joints, targets of
    /// animations that the container does not hold, hidden nodes. Default: false.
    std::vector<bool> keptNodes = {};
    /// [nodes] The key of each node in the host's own tables; -1 for nodes that steps have added. Default: -1.
    std::vector<int> nodeKeys = {};
    /// [geometries] The key of each mesh in the host's own tables. A copy has the key of its original. Default: -1.
    std::vector<int> meshKeys = {};
};

}  // namespace Pipeline
