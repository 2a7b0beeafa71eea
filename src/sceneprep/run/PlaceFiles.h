#pragma once

#include <filesystem>
#include <functional>
#include <ostream>
#include <vector>

namespace Sceneprep
{

/// A new folder that is gone, with all that is in it, at the end; also when the work is stopped from outside.
///
/// A folder and not just another name: some formats refer to companion files by names made of the file's own.
class TemporaryFolder
{
public:
    /// @throws ToolError when no folder can be made there.
    explicit TemporaryFolder(const std::filesystem::path& parent);
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// @return whether two names stand for one file, there already or not.
bool NameOneFile(const std::filesystem::path& a, const std::filesystem::path& b);

/// Moves all files of a folder beside a file, that file last, once all of them are on the disk. Nobody can stop the
/// program half way. The work is then at Phase::Written.
///
/// The file may be replaced, for somebody named it. Its companions, which nobody named, replace files that hold
/// something else only where the file is replaced as well: then these are taken for its former companions.
///
/// @param others  further files of this run, which no companion may take the place of
/// @throws ToolError when one cannot be moved. Nothing has been moved if it can be known beforehand: folders in the
///         way, files of others.
void MoveIntoPlace(const std::filesystem::path& from, const std::filesystem::path& file,
                   const std::vector<std::filesystem::path>& others = {});

/// Writes a file that appears whole or not at all. Pipes, devices and links are written to instead, not replaced.
/// @throws ToolError when it cannot be written.
void WriteWhole(const std::filesystem::path& file, const std::function<void(std::ostream&)>& write);

}  // namespace Sceneprep
