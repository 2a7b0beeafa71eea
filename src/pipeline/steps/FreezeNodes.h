#pragma once

#include <pipeline/scene/WorkScene.h>

#include <string>
#include <vector>

namespace Pipeline
{

/// Marks nodes whose name matches one of the patterns, see MatchesGlob(), and everything below them, as frozen.
/// Takes linear time for each pattern.
/// @return the patterns that match no node.
std::vector<std::string> FreezeNodes(const WorkScene& scene, const std::vector<std::string>& patterns);

}  // namespace Pipeline
