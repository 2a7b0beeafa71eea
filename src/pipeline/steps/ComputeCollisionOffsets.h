#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Gives surfaces whose world boxes overlap different collision offsets.
Changes ComputeCollisionOffsets(const WorkScene& scene, const PrepareOptions& options = {},
                                const PartListener& listener = IgnorePart);

}  // namespace Pipeline
