#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Flips the normals that point against their triangle. Meshes without normals get computed ones first. Pinned meshes
/// are skipped.
Changes UnifyNormals(const WorkScene& scene, const PrepareOptions& options = {},
                     const PartListener& listener = IgnorePart);

}  // namespace Pipeline
