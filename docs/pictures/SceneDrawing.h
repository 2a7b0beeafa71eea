#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pictures/Stage.h>

#include <functional>

namespace Pictures
{

/// How a surface is drawn, given its index and how many listings of surfaces were drawn before it.
using SurfaceStyle = std::function<MeshStyle(int surface, std::size_t listing)>;

/// Puts up every surface that a node below the root lists, where the node stands in the root's frame.
void AddScene(Stage& stage, Importing::SceneContainer& scene, const SurfaceStyle& styleOf);

}  // namespace Pictures
