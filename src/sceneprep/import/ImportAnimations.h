#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/import/ImportObjects.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// Brings the animations of nodes into the scene: keys at every time at which position, rotation or scale has one, the
/// other two interpolated. A node that several animations move keeps the first one. Time begins at 0: of what lies
/// before, the place at 0 is kept. Morph targets do not move.
/// @return what is left out, one line each.
std::vector<std::string> ImportAnimations(const aiScene& source, const NodeNames& nodes,
                                          Importing::SceneContainer& scene);

}  // namespace Sceneprep
