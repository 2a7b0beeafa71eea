#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/WorkScene.h>
#include <pipeline/steps/Changes.h>
#include <pipeline/steps/PrepareOptions.h>

#include <string>

namespace Pipeline
{

/// Generates the texture coordinate sets that options.uvs names for every mesh. Attributes in such a set are moved to
/// the sets after it. Pinned meshes are skipped.
Changes GenerateUVs(const WorkScene& scene, const PrepareOptions& options = {},
                    const PartListener& listener = IgnorePart);

/// Adds a mapping, as "cubic:1:world", to options.uvs. Returns an error text if the mapping is not valid or its set is
/// generated already, else an empty text.
std::string AddUVMapping(PrepareOptions& options, const std::string& text);

}  // namespace Pipeline
