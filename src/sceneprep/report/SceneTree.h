#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>

namespace Sceneprep
{

/// Returns the node hierarchy, one node a line, children indented by two spaces: the name, then the node's contents.
std::string TreeText(Importing::SceneContainer& scene);

}  // namespace Sceneprep
