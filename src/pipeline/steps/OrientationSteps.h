#pragma once

#include <pipeline/steps/StepSequence.h>

namespace Pipeline
{

/// Takes mirroring out of the nodes' matrices and into the meshes, so that the world looks as before: places, and which
/// way faces look. The scene's surfaces must not share meshes.
///
/// SceneContainer::RemoveNegativeScaleMatricies() is called for one mirrored node after the other, the deepest first: a
/// mirrored node below a mirrored one would lose its place otherwise. Cameras and lights keep their places; faces that
/// the operation turned against the picture are turned back.
///
/// A mirrored node stays as it is where the operation would move something: it or a node below it is animated (keys
/// replace a node's matrix), is a joint or shows a skinned mesh, or its matrix cannot be taken apart (a row without
/// length, or a skew).
Changes RepairMirrors(Importing::SceneContainer& scene, const PartListener& listener = IgnorePart);

/// Turns meshes whose first triangle faces away from its normal, as SceneContainer::CheckFacesOrientation() does. What
/// a matrix mirrors is judged as viewers show it, with its winding turned. The scene's surfaces must not share meshes.
Changes CheckOrientation(Importing::SceneContainer& scene);

}  // namespace Pipeline
