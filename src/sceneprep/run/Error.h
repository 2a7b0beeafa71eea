#pragma once

#include <stdexcept>
#include <string>

namespace Sceneprep
{

/// Exit statuses of the program.
inline constexpr int kDone = 0;
inline constexpr int kUnusable = 1;  ///< the input could not be used, or the output not be written
inline constexpr int kBadUsage = 2;  ///< the command line makes no sense

/// Something went wrong that the user can do something about. The text is one line: what failed, where, what to do.
class ToolError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// @return the text with every run of white space, line breaks included, as one blank and none at the ends.
std::string OneLine(const std::string& text);

/// @return what the program prints about a problem: one line, also where a file's name goes over several.
std::string ErrorLine(const std::string& problem);

}  // namespace Sceneprep
