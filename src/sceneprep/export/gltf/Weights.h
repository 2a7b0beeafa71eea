#pragma once

#include <importing/geometry/Geometry.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Sceneprep::Gltf
{

/// The weights of a mesh in sets of four, [sets][vertices]: the joints, and what share each has.
///
/// The shares of a vertex add up to 1, over all sets. Shares of one joint are joined; what is not used names joint 0
/// with share 0. A vertex without weights follows joint 0.
struct WeightSets
{
    std::vector<std::vector<std::array<std::uint16_t, 4>>> joints;
    std::vector<std::vector<std::array<float, 4>>> weights;
    std::size_t sharedAnew = 0;  ///< vertices whose weights did not add up to 1
};

/// @return the weights of every vertex; none when the mesh has no weights or a weight names a joint that it does not
///         have.
std::optional<WeightSets> CollectWeights(Importing::Geometry& geometry);

}  // namespace Sceneprep::Gltf
