#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>

namespace Sceneprep
{

/// @return the node hierarchy, one node a line, children indented by two blanks: the name, then what the node lists.
std::string TreeText(Importing::SceneContainer& scene);

}  // namespace Sceneprep
