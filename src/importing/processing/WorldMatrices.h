#pragma once

#include <importing/plugin/SceneContainer.h>

#include <cstdint>
#include <vector>

namespace Importing
{

/// Caches the world matrices of nodes, as CalculateGlobalTM returns them.
///
/// A derived container gets one call of CalculateGlobalTM for each requested node. In a plain container the matrix of a
/// node is computed from that of its parent, which is cached too.
///
/// Cost: linear in the nodes and child list entries to create; all requests together are linear in the nodes.
class WorldMatrices
{
public:
    explicit WorldMatrices(SceneContainer& scene);

    /// Returns the world matrix of a node. The reference is valid as long as this object.
    /// @throws std::out_of_range when index is not the index of a node.
    /// @throws std::runtime_error "cycle in the node hierarchy" in a plain container, when the node or one of its
    ///         ancestors is its own ancestor.
    const D3DXMATRIX& Of(int index);

private:
    enum class State : std::uint8_t
    {
        Unknown,
        Wanted,
        Known
    };

    void Compose(std::int32_t index);
    void Remember(std::int32_t index, const D3DXMATRIX& matrix);

    SceneContainer& scene_;
    bool isPlain_;
    std::vector<std::int32_t> parents_;
    std::vector<State> states_;
    std::vector<D3DXMATRIX> matrices_;
    std::vector<std::int32_t> path_;
};

}  // namespace Importing
