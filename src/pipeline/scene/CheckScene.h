#pragma once

#include <importing/plugin/SceneContainer.h>

namespace Pipeline
{

/// Checks that the scene is a tree and that all indices are valid; -1 is allowed where it means none.
/// Takes linear time and changes nothing.
/// @throws std::out_of_range if an index in a node, a surface or a mesh is outside its library or vertex array.
/// @throws std::runtime_error if a node that is reachable from the root has two parents or is below itself.
void CheckScene(const Importing::SceneContainer& scene);

}  // namespace Pipeline
