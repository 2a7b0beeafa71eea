#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Computes the normals of every mesh: smooth, with vertices split at hard edges. Pinned meshes are skipped.
Changes ComputeNormals(const WorkScene& scene, const PrepareOptions& options = {},
                       const PartListener& listener = IgnorePart);

}  // namespace Pipeline
