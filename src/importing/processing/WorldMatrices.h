#pragma once

#include <importing/plugin/SceneContainer.h>

#include <cstdint>
#include <vector>

namespace Importing
{

/// The world matrices of nodes as CalculateGlobalTM returns them, each found once.
///
/// A derived container gets one call of CalculateGlobalTM for each node that is asked for. In a plain one a node's
/// matrix is made from its parent's, which is kept too, so that all nodes together cost one walk.
class WorldMatrices
{
public:
    explicit WorldMatrices(SceneContainer& scene);

    /// @throws std::out_of_range when index designates no node.
    /// @throws std::runtime_error "cycle in the node hierarchy" when a node is among its own ancestors.
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
