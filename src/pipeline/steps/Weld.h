#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Welds equal vertices of every mesh, and drops unused vertices of meshes that have equal ones, as WeldMesh() does.
/// Pinned meshes are skipped. Where normals are going to be computed, the old ones are set to (0, 0, 0) first, so that
/// they do not keep vertices apart.
Changes Weld(const WorkScene& scene, const PrepareOptions& options = {}, const PartListener& listener = IgnorePart);

}  // namespace Pipeline
