#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Removes negative scale from the nodes' matrices and bakes it into their meshes. The scene looks as before: positions
/// and the sides from which faces are seen stay. The scene's surfaces must not share meshes.
///
/// Calls SceneContainer::RemoveNegativeScaleMatricies() for one mirrored node after the other, the deepest first, since
/// a mirrored node below a mirrored one would lose its transform otherwise. Cameras and lights keep their world
/// transforms. Normals and
/// tangents are baked by the inverse transpose and the matrix itself. The winding of faces that the operation flips
/// against their appearance is flipped back.
///
/// A mirrored node stays as it is where the operation would move something: if it or a node below it is animated (keys
/// replace a node's matrix), is kept, is a joint or shows a skinned or pinned mesh; or if its matrix cannot be
/// decomposed (a row without length, or a skew).
Changes RepairMirrors(const WorkScene& scene, const PrepareOptions& options = {},
                      const PartListener& listener = IgnorePart);

}  // namespace Pipeline
