#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/import/ImportObjects.h>

namespace Sceneprep
{

/// Adds the animations of nodes to the scene. A node gets a key at every time at which its position, rotation or scale
/// has one; the other two are interpolated. If several animations move a node, the first one is kept. Keys before time
/// 0 are replaced by one key at time 0. Channels of morph targets are skipped; CarryClips() keeps all animations.
/// @return a loss if keys before time 0 were dropped
Notes ImportAnimations(const aiScene& source, const NodeNames& nodes, Importing::SceneContainer& scene);

}  // namespace Sceneprep
