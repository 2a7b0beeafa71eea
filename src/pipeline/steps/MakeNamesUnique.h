#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Makes the names of nodes, meshes and materials unique, each within its library. Joints are renamed with their nodes.
Changes MakeNamesUnique(const WorkScene& scene, const PrepareOptions& options = {},
                        const PartListener& listener = IgnorePart);

/// Makes the names of surfaces unique.
Changes MakeSurfaceNamesUnique(const WorkScene& scene, const PrepareOptions& options = {},
                               const PartListener& listener = IgnorePart);

}  // namespace Pipeline
