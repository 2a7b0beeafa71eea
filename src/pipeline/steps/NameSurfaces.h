#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Names every surface after its mesh and its material.
Changes NameSurfaces(const WorkScene& scene, const PrepareOptions& options = {},
                     const PartListener& listener = IgnorePart);

}  // namespace Pipeline
