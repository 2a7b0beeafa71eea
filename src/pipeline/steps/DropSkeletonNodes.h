#pragma once

#include <pipeline/scene/WorkScene.h>

#include <cstddef>

namespace Pipeline
{

/// Drops branches of the hierarchy that hold nothing but joints: they hold joints of some mesh, and neither surfaces,
/// cameras, lights, kept nodes nor animated nodes that are not joints. The meshes' own joints have all that they say.
/// @return how many nodes were dropped.
std::size_t DropSkeletonNodes(const WorkScene& scene);

}  // namespace Pipeline
