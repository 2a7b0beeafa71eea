#pragma once

#include <cstddef>
#include <cstdint>

namespace Sceneprep
{

/// What a viewer counts in a file, and what the file costs.
struct ViewerCounts
{
    std::size_t nodes = 0;         ///< without the instances of EXT_mesh_gpu_instancing
    std::size_t drawCalls = 0;     ///< one for each primitive of a mesh that a node shows; instances are one together
    std::size_t materials = 0;     ///< that are in use
    std::uintmax_t gpuBytes = 0;   ///< of vertices and indices without compression, each mesh once
    std::uintmax_t fileBytes = 0;  ///< of the file, and of the buffers and images that it refers to
};

}  // namespace Sceneprep
