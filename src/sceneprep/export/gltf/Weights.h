#pragma once

#include <importing/geometry/Geometry.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Sceneprep::Gltf
{

/// The weights of a mesh in sets of four, [sets][vertices].
///
/// The weights of a vertex add up to 1 over all sets. Several weights of one joint are added up; unused entries are
/// joint 0 with weight 0. A vertex without weights follows joint 0.
struct WeightSets
{
    std::vector<std::vector<std::array<std::uint16_t, 4>>> joints;
    std::vector<std::vector<std::array<float, 4>>> weights;
    std::size_t normalized = 0;  ///< vertices whose weights did not add up to 1
};

/// Returns the weights of every vertex; nothing if the mesh has no weights, or a weight of a joint that does not exist.
/// Takes linear time.
std::optional<WeightSets> CollectWeights(Importing::Geometry& geometry);

}  // namespace Sceneprep::Gltf
