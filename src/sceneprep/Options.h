#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// What `prepare` is asked to do.
struct PrepareOptions
{
    std::filesystem::path input;
    std::filesystem::path output;
    bool flatten = false;
    int minSurfaces = 2;
    int maxVertices = -1;  ///< negative: no limit
    bool ignoreAnimation = false;
};

/// What `inspect` is asked to do.
struct InspectOptions
{
    std::filesystem::path input;
    bool json = false;
    bool tree = false;
};

enum class Command
{
    Prepare,
    Inspect,
    Formats
};

/// A command line that makes sense. Of prepare and inspect only the one that command names is filled.
struct Options
{
    Command command = Command::Formats;
    std::filesystem::path plugin;  ///< empty: look for it in the usual places
    PrepareOptions prepare;
    InspectOptions inspect;
};

/// What a command line comes to: options to act upon, or a text to print and the status to exit with.
struct ParsedCommandLine
{
    std::optional<Options> options;
    int exitStatus = 0;
    std::string output;  ///< for stdout: help or version
    std::string error;   ///< for stderr: one line, without the line break
};

/// Understands the words behind the program's name. Throws nothing; prints nothing.
ParsedCommandLine ParseCommandLine(const std::vector<std::string>& words);

}  // namespace Sceneprep
