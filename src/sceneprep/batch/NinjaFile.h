#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Sceneprep::Batch
{

/// One model of a batch. All paths are absolute.
struct Edge
{
    std::string name;  ///< shown as progress
    std::filesystem::path input;
    std::filesystem::path output;
    std::filesystem::path report;   ///< the JSON report
    std::filesystem::path depfile;  ///< lists the files that the model consists of
    std::filesystem::path log;      ///< error lines of the run
    std::filesystem::path status;   ///< the exit status of the run
};

/// What all edges have in common.
struct NinjaSettings
{
    std::filesystem::path program;                         ///< sceneprep
    std::vector<std::filesystem::path> dependencies = {};  ///< further files that outputs depend on: the plug-in
    std::vector<std::string> arguments = {};               ///< options of `prepare`
    std::filesystem::path folder;                          ///< for Ninja's own records
};

/// Returns the text as one word for a POSIX shell.
std::string ShellWord(std::string_view text);

/// Returns the command of an edge for a POSIX shell, on one line. Its exit status is that of `prepare`.
std::string CommandOf(const Edge& edge, const NinjaSettings& settings);

/// Returns a Ninja file with one edge for each model. Ninja runs an edge again if the model, a file that it refers to,
/// the program or the command has changed.
/// @throws ToolError if a path or an option has a line break, which Ninja files cannot express.
std::string NinjaText(const std::vector<Edge>& edges, const NinjaSettings& settings);

}  // namespace Sceneprep::Batch
