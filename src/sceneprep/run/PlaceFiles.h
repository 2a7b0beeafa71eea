#pragma once

#include <sceneprep/run/WorkState.h>

#include <filesystem>
#include <functional>
#include <ostream>
#include <vector>

namespace Sceneprep
{

/// A new folder that is removed with its contents at the end, also if the work is stopped from outside.
///
/// A folder instead of a temporary file name, since some formats name companion files after the file.
class TemporaryFolder
{
public:
    /// @throws ToolError if the folder cannot be created.
    TemporaryFolder(const std::filesystem::path& parent, WorkState& state);
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
    WorkState& state_;
};

/// Returns whether two names refer to one file, which need not exist.
bool NameOneFile(const std::filesystem::path& a, const std::filesystem::path& b);

/// Moves all files of a folder next to a file, that file last, after flushing them to the disk. Stop signals are
/// blocked meanwhile. The state is then at Phase::Written.
///
/// The file replaces an existing one, since the user named it. Its companions, which the user did not name, replace
/// files with other contents only if the file itself is replaced: those are taken for its former companions.
///
/// @param others  further files of this run, which no companion may replace
/// @throws ToolError if a file cannot be moved. Nothing has been moved if the reason can be known in advance: folders
/// in
///         the way, files of others.
void MoveIntoPlace(const std::filesystem::path& from, const std::filesystem::path& file, WorkState& state,
                   const std::vector<std::filesystem::path>& others = {});

/// Writes a file that appears complete or not at all. Pipes, devices and links are written to, not replaced.
/// @throws ToolError if it cannot be written.
void WriteWhole(const std::filesystem::path& file, WorkState& state, const std::function<void(std::ostream&)>& write);

}  // namespace Sceneprep
