#pragma once

#include <sceneprep/Options.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/RunContext.h>

namespace Sceneprep
{

/// Runs `inspect`: reads a model and prints its counts, its measure and, if requested, its hierarchy.
/// @return kDone, or kOverBudget if the model exceeds a limit.
/// @throws ToolError if the input cannot be read.
int Inspect(const InspectOptions& options, const PluginLibrary& plugin, const RunContext& context, Progress& progress);

}  // namespace Sceneprep
