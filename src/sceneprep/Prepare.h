#pragma once

#include <sceneprep/Options.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/Progress.h>

#include <ostream>

namespace Sceneprep
{

/// Runs `prepare`: reads and appends the inputs, runs the steps, compares the worlds before and after, exports the
/// result and reports.
///
/// @param out     takes the report
/// @param errors  takes one line for each input that was left out
/// @return kDone, or kUnusable when inputs were left out.
/// @throws ToolError when nothing could be written, which with strict includes a result that shows another world.
int Prepare(const PrepareCommand& options, const PluginLibrary& plugin, std::ostream& out, std::ostream& errors,
            Progress& progress);

}  // namespace Sceneprep
