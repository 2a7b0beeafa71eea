#pragma once

#include <pipeline/steps/StepOptions.h>
#include <pipeline/steps/StepSequence.h>

namespace Pipeline
{

/// @return the steps that the options ask for, and those that they imply, in the order in which they make sense.
StepSequence MakePipeline(const StepOptions& options);

/// @return whether a step is among them that works on the mesh of each surface by itself, so that surfaces must not
///         share meshes.
bool NeedsOwnMeshes(const StepOptions& options);

/// The recommended road: all that makes a scene lighter and tidier and leaves the picture, and the artist's normals and
/// texture coordinates, as they are.
void ChooseRecommended(StepOptions& options);

}  // namespace Pipeline
