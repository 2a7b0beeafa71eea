#pragma once

#include <array>
#include <csignal>
#include <cstdint>
#include <functional>

namespace Sceneprep
{

/// Signals that ask the program to stop. Those that are ignored when it starts, as under nohup, stay ignored.
inline constexpr std::array<int, 3> kStopSignals = {SIGHUP, SIGINT, SIGTERM};

/// The end of a process.
struct ChildResult
{
    int status = 0;         ///< the command's result, if no signal ended it
    int killedBy = 0;       ///< the signal that ended it, or 0
    int interruptedBy = 0;  ///< one of kStopSignals if this process was asked to stop meanwhile, or 0
};

/// Returns three quarters of the machine's memory, in bytes; 0 if it cannot be determined.
std::uint64_t DefaultMemoryLimit();

/// Runs a command in a child process, so that a model that crashes Assimp, or makes it use too much memory, does not
/// end this process. kStopSignals end the child; this process continues, to clean up.
///
/// If no process can be created, the command runs in this one.
/// @param memoryLimit  in bytes; asking for more fails in the child. 0 sets no limit. Not in builds with the address
///                     sanitizer, which reserves far more than it uses
ChildResult RunInChildProcess(std::uint64_t memoryLimit, const std::function<int()>& command);

}  // namespace Sceneprep
