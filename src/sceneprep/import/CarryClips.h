#pragma once

#include <assimp/scene.h>
#include <sceneprep/import/ImportObjects.h>
#include <sceneprep/model/Carried.h>

namespace Sceneprep
{

/// Appends every animation of a file as a clip: its name and the unchanged keys of positions, rotations and scales,
/// with times in seconds. Channels of nodes that the scene does not have are skipped, and so are clips without
/// channels.
/// @param nodes  from the name of a node to its node key
/// @return the number of skipped channels
std::size_t CarryClips(const aiScene& source, const NodeNames& nodes, Carried& carried);

}  // namespace Sceneprep
