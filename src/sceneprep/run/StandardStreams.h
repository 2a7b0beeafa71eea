#pragma once

#include <ostream>

namespace Sceneprep
{

/// Opens those of stdin, stdout and stderr that are closed so that using them fails: a model file that is opened later
/// would get their number, and what is printed would end up in it.
void OccupyClosedStreams();

/// Hands over what the stream has buffered.
/// @return whether all that was written to it has arrived.
bool HasArrived(std::ostream& out);

/// What is wrong when results do not arrive.
inline constexpr const char* kNoStdout = "cannot write the results to stdout; is its disk full, or is it closed?";

}  // namespace Sceneprep
