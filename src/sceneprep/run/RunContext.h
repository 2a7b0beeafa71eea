#pragma once

#include <sceneprep/run/WorkState.h>

#include <filesystem>
#include <ostream>
#include <vector>

namespace Sceneprep
{

/// The output streams of a run of the program, and the record of its current work.
struct RunContext
{
    std::ostream& out;     ///< results
    std::ostream& errors;  ///< progress, notes and one-line errors
    WorkState& state;
    bool errorsGoToTerminal = false;                        ///< progress is then one line that is rewritten
    std::vector<std::filesystem::path> crashedInputs = {};  ///< the inputs that earlier attempts crashed on
};

}  // namespace Sceneprep
