#pragma once

#include <sceneprep/Options.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/RunContext.h>

namespace Sceneprep
{

/// Runs `prepare`: reads and appends the inputs, runs the steps, compares the scene before and after, exports the
/// result and prints the report, and one error line for each input that was skipped.
///
/// @return kDone; kUnusable if inputs were skipped; kOverBudget if the result exceeds a limit, and is written.
/// @throws ToolError if the output could not be written; with `strict` also if the result differs from the input.
int Prepare(const PrepareCommand& options, const PluginLibrary& plugin, const RunContext& context, Progress& progress);

}  // namespace Sceneprep
