#pragma once

#include <sceneprep/Options.h>

#include <cstdint>
#include <functional>
#include <ostream>

namespace Sceneprep
{

/// @return the memory that the work may take, in bytes.
std::uint64_t MemoryLimitOf(const Options& options);

/// Does what the options ask for in a process of its own and tells, in one line on `errors`, when that ended early: by
/// a crash, or because the user stopped it. What was half written is removed then, and the line says when the output
/// had been written already.
///
/// With keepGoing a crash while an input is read starts the work again without that input.
///
/// @param run  the work; returns the exit status
/// @return the exit status: that of the work; kUnusable after a crash, also one that was got over; 128 and the signal's
///         number when the user stopped it.
int RunIsolated(const Options& options, std::ostream& errors, const std::function<int(const Options&)>& run);

}  // namespace Sceneprep
