#pragma once

#include <sceneprep/Options.h>

#include <ostream>
#include <string>

namespace Sceneprep
{

/// Does what the options ask for. Results go to `out`; progress, notes and one-line errors to `errors`.
/// @return the exit status.
int RunCommand(const Options& options, std::ostream& out, std::ostream& errors);

/// @return what a command works on: the name of its first input.
std::string SubjectOf(const Options& options);

}  // namespace Sceneprep
