#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Flips the winding of meshes whose first triangle faces away from its normal, as
/// SceneContainer::CheckFacesOrientation() does. Meshes below a mirroring matrix are judged as viewers show them, with
/// their winding flipped. Meshes without normals get computed ones first. Pinned meshes and meshes without triangles
/// are skipped. Surfaces must not share meshes.
Changes CheckOrientation(const WorkScene& scene, const PrepareOptions& options = {},
                         const PartListener& listener = IgnorePart);

}  // namespace Pipeline
