#pragma once

#include <ostream>

namespace Sceneprep
{

/// Opens those of stdin, stdout and stderr that are closed, in such a way that using them fails. Otherwise a model file
/// that is opened later would get their number, and printed text would be written into it.
void OccupyClosedStreams();

/// Flushes the stream. Returns whether everything that was written to it has arrived.
bool HasArrived(std::ostream& out);

/// The error message for results that could not be written.
inline constexpr const char* kNoStdout = "cannot write the results to stdout; is its disk full, or is it closed?";

}  // namespace Sceneprep
