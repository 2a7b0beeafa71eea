#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Runs another program, which is found by PATH, and waits for it. What it writes to stdout goes to stderr. It gets
/// SIGTERM if this process ends before it.
/// @param arguments  the first one is the name of the program
/// @return the exit status, or 128 plus the number of the signal that ended the program; none if there is no such
///         program.
/// @throws ToolError if no process can be created.
std::optional<int> RunOtherProgram(const std::vector<std::string>& arguments);

}  // namespace Sceneprep
