#pragma once

#include <sceneprep/model/Model.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// What a clip of a file plays.
struct ClipKey
{
    std::string name;
    std::size_t channels = 0;
    double duration = 0;  ///< in seconds
    std::string text;     ///< equal for clips with the same channels: paths, interpolation and keys, in any order
};

/// Describes the clips of a model. Nodes are not compared, because steps may rename them.
std::vector<ClipKey> ListClips(const Model& model);

}  // namespace Sceneprep
