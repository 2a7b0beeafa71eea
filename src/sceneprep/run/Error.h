#pragma once

#include <stdexcept>
#include <string>

namespace Sceneprep
{

/// Exit statuses of the program.
inline constexpr int kDone = 0;
inline constexpr int kUnusable = 1;    ///< an input could not be read, or the output could not be written
inline constexpr int kUsageError = 2;  ///< the command line is not valid

/// An error that the user can do something about. The text is one line: what failed, on what, why, what to try.
class ToolError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Returns the text with every run of white space replaced by one space, and none at the ends.
std::string OneLine(const std::string& text);

/// Returns the line that the program prints about a problem. Line breaks, which file names may have, become spaces.
std::string ErrorLine(const std::string& problem);

}  // namespace Sceneprep
