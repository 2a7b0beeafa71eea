#pragma once

#include <pipeline/steps/PrepareOptions.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// What `prepare` is asked to do.
struct PrepareCommand
{
    std::vector<std::filesystem::path> inputs = {};  ///< the first takes the others
    std::filesystem::path output = {};
    Pipeline::PrepareOptions steps = {};
    bool strict = false;                    ///< fail when the world is not the same afterwards
    std::filesystem::path jsonFile = {};    ///< empty: none
    std::filesystem::path reportFile = {};  ///< the page; empty: none
    bool keepGoing = false;                 ///< leave inputs out that cannot be read
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
    bool quiet = false;
    bool isIsolated = true;  ///< whether the work runs in a process of its own
    double memoryLimit = 0;  ///< in GiB; 0: three quarters of the machine's memory
    PrepareCommand prepare;
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

/// Understands the arguments behind the program's name. Throws nothing; prints nothing.
ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace Sceneprep
