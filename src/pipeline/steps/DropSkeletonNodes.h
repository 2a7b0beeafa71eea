#pragma once

#include <pipeline/scene/WorkScene.h>

#include <cstddef>

namespace Pipeline
{

/// Drops branches of the hierarchy that consist of joints only: they contain a joint of a mesh, and no surfaces,
/// cameras, lights, kept nodes, or animated nodes that are not joints. Nothing is lost, because the joints are also
/// stored in the meshes. Returns the number of dropped nodes.
std::size_t DropSkeletonNodes(const WorkScene& scene);

}  // namespace Pipeline
