#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>

namespace Sceneprep
{

/// What the program is working on, in memory that child processes share: the process that watches over a child can
/// read it after the child has crashed. Create it once, before the child process.
class WorkState
{
public:
    enum class Phase
    {
        Starting,
        Reading,
        Preparing,
        Writing,
        Written  ///< the file is in place
    };

    /// @throws std::bad_alloc if there is no memory to share.
    WorkState();
    ~WorkState();
    WorkState(const WorkState&) = delete;
    WorkState& operator=(const WorkState&) = delete;

    /// Forgets everything, before work starts again.
    void Reset();

    /// Records that the work turns to another phase or another file. Paths are cut after 4,000 bytes. Clears
    /// RanOutOfMemory().
    void Enter(Phase phase, const std::filesystem::path& file);

    Phase CurrentPhase() const;
    std::filesystem::path CurrentFile() const;

    /// Returns the work in words, as "reading car.obj".
    std::string Describe() const;

    /// Returns the line to print about an error: the text of a ToolError, DescribeShortage() for std::bad_alloc, and
    /// "reading car.obj failed: REASON; check the model" for anything else.
    std::string DescribeError(const std::exception& error) const;

    /// Records from now on when an allocation in this process fails. Assimp swallows std::bad_alloc and reports other
    /// reasons. One WorkState at a time can watch, since a process has one new-handler.
    /// @param limit  the memory that this process may use, in bytes
    void WatchMemory(std::uint64_t limit);
    bool RanOutOfMemory() const;

    /// Returns "reading car.obj needs more than 4 GiB; raise --memory-limit or use a smaller model".
    std::string DescribeShortage() const;

    /// Records a folder to remove if the work ends early; an empty path if there is none any more.
    void SetTemporaryFolder(const std::filesystem::path& folder);

    /// Removes the recorded temporary folder, if any.
    void RemoveTemporaryFolder();

private:
    struct Record;

    static Record* watched_;
    Record* record_;
};

inline constexpr double kBytesPerGiB = 1024.0 * 1024.0 * 1024.0;

}  // namespace Sceneprep
