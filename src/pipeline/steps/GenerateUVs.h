#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

#include <string>

namespace Pipeline
{

/// Writes the texture coordinate sets that options.uvs names, of every mesh. Attributes in such a set
/// move to the sets after it. Pinned meshes are skipped.
Changes GenerateUVs(const WorkScene& scene, const PrepareOptions& options = {},
                    const PartListener& listener = IgnorePart);

/// Adds a mapping, as "cubic:1:world", to options.uvs.
/// @return what is wrong with the text; empty when it was added.
std::string AddUVMapping(PrepareOptions& options, const std::string& text);

}  // namespace Pipeline
