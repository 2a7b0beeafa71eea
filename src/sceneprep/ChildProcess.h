#pragma once

#include <functional>
#include <ostream>
#include <string>

namespace Sceneprep
{

/// Runs a command in a process of its own, so that a model that brings the model library down, or makes it ask for
/// more memory than the machine has, ends in a message instead of a crash.
///
/// @param subject  what the command works on, for the message
/// @return the command's result; kUnusable, with one line on `errors`, when the process was killed by a signal.
int RunInChildProcess(const std::string& subject, std::ostream& errors, const std::function<int()>& command);

}  // namespace Sceneprep
