#pragma once

#include <sceneprep/Options.h>
#include <sceneprep/run/RunContext.h>

#include <string>

namespace Sceneprep
{

/// Runs the command that the options name.
/// @return the exit status.
int RunCommand(const Options& options, const RunContext& context);

/// Returns the subject of a command: the name of its first input.
std::string SubjectOf(const Options& options);

}  // namespace Sceneprep
