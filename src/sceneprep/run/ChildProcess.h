#pragma once

#include <array>
#include <csignal>
#include <cstdint>
#include <functional>

namespace Sceneprep
{

/// Signals that ask the program to stop. Those that whoever started it lets it ignore, as nohup does, stay ignored.
inline constexpr std::array<int, 3> kStopSignals = {SIGHUP, SIGINT, SIGTERM};

/// How a process ended.
struct ChildResult
{
    int status = 0;         ///< what the command returned, where no signal ended it
    int killedBy = 0;       ///< the signal that ended it, or 0
    int interruptedBy = 0;  ///< one of kStopSignals where this process was asked to stop meanwhile, or 0
};

/// @return three quarters of the machine's memory, in bytes; 0 when that cannot be found out.
std::uint64_t DefaultMemoryLimit();

/// Runs a command in a process of its own, so that a model that brings the model library down, or makes it ask for too
/// much memory, does no harm here. kStopSignals end the child; this process goes on, to clean up.
///
/// Where no process can be made the command runs in this one.
/// @param memoryLimit  in bytes; asking for more fails in the child. 0 sets no limit. Not in builds with the address
///                     sanitizer, which reserves far more than it uses
ChildResult RunInChildProcess(std::uint64_t memoryLimit, const std::function<int()>& command);

}  // namespace Sceneprep
