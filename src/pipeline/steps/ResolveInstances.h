#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

namespace Pipeline
{

/// Gives every reference to a surface a mesh of its own. A copy has the key, the layout and the pin of its original.
/// Meshes with several references, and at least options.keepInstances of them if that is positive, stay shared instead.
Changes ResolveInstances(const WorkScene& scene, const PrepareOptions& options = {},
                         const PartListener& listener = IgnorePart);

}  // namespace Pipeline
