#pragma once

#include <ostream>

namespace Sceneprep
{

/// Opens those of stdin, stdout and stderr that are closed so that using them fails: a model file that is opened later
/// would get their number, and what is printed would end up in it.
void OccupyClosedStreams();

/// Flushes the stream. Returns whether everything that was written to it has arrived.
bool HasArrived(std::ostream& out);

/// The error message for results that could not be written.
inline constexpr const char* kNoStdout = "cannot write the results to stdout; is its disk full, or is it closed?";

}  // namespace Sceneprep
