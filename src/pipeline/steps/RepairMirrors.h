#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Removes negative scale from the nodes' matrices and bakes it into their meshes. The appearance of the scene does not
/// change: world positions and front faces stay. Surfaces must not share meshes.
///
/// Calls SceneContainer::RemoveNegativeScaleMatricies() for one mirrored node after the other, the deepest first;
/// otherwise a mirrored node below a mirrored one would lose its transform. Cameras and lights keep their world
/// transforms. Normals are baked by the inverse transpose, tangents by the matrix itself. Where the operation flips
/// faces wrongly, they are flipped back.
///
/// A mirrored node is not changed if the operation would move something: if it or a node below it is animated (keys
/// replace a node's matrix), is kept, is a joint, or references a skinned or pinned mesh; or if its matrix cannot be
/// decomposed (it is singular or sheared).
Changes RepairMirrors(const WorkScene& scene, const PrepareOptions& options = {},
                      const PartListener& listener = IgnorePart);

}  // namespace Pipeline
