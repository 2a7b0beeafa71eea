#pragma once

#include <pictures/Image.h>

namespace Pictures
{

/// A mirrored node made an ordinary one: SceneContainer::RemoveNegativeScaleMatricies().
Image DrawRepairMirrors();
/// Flattening with and without SceneContainer::ResolveGeomInstances() before.
Image DrawResolveInstances();
/// Overlapping boxes: SceneContainer::CalculateSurfaceCollisionOffset().
Image DrawCollisionOffsets();

}  // namespace Pictures
