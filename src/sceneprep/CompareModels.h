#pragma once

#include <sceneprep/Options.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/RunContext.h>

namespace Sceneprep
{

/// Runs `compare`: prints whether two models show the same, and the first differences.
///
/// @return kDone if they do, otherwise kUnusable.
/// @throws ToolError if a file could not be read or written.
int CompareModels(const CompareCommand& options, const PluginLibrary& plugin, const RunContext& context,
                  Progress& progress);

}  // namespace Sceneprep
