#pragma once

#include <sceneprep/Options.h>

#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// The result of a command line: options to run, or a text to print and an exit status.
struct ParsedCommandLine
{
    std::optional<Options> options;
    int exitStatus = 0;
    std::string output;  ///< for stdout: help or version
    std::string error;   ///< for stderr: one line, without the line break
};

/// Parses the arguments after the program's name. Prints nothing; does not throw for bad arguments.
ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace Sceneprep
