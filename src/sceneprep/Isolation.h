#pragma once

#include <sceneprep/Options.h>
#include <sceneprep/run/RunContext.h>

#include <cstdint>
#include <functional>

namespace Sceneprep
{

/// Returns the memory that the work may use, in bytes.
std::uint64_t MemoryLimitOf(const Options& options);

/// A command: runs with options and a context, and returns the exit status.
using CommandFunction = std::function<int(const Options&, const RunContext&)>;

/// Runs a command in a child process. If that ends early, by a crash or because the user stopped it, removes what was
/// half written and prints one error line, which says if the output had been written already.
///
/// With keepGoing, a crash while an input is read starts the work again without that input.
///
/// @return the exit status: that of the command; kUnusable after a crash, also if the work could continue without the
///         input; 128 plus the number of the signal if the user stopped it.
int RunIsolated(const Options& options, const RunContext& context, const CommandFunction& run);

}  // namespace Sceneprep
