#pragma once

#include <pipeline/steps/StepSequence.h>

namespace Pipeline
{

/// Gives every listing of a surface a mesh of its own.
Changes ResolveInstances(Importing::SceneContainer& scene);

/// Gives surfaces whose world boxes overlap different collision offsets.
Changes ComputeCollisionOffsets(Importing::SceneContainer& scene);

}  // namespace Pipeline
