#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>

namespace Sceneprep
{

/// What the work is at, kept where the process that watches over it can see it even after a crash.
///
/// One record a program, in memory that child processes share. It has to be touched once before the first of them.
namespace WorkState
{

enum class Phase
{
    Starting,
    Reading,
    Preparing,
    Writing,
    Written  ///< the file is in its place
};

/// The work begins: nothing is known yet.
void Reset();

/// The work turns to another phase, or another file; it has not run out of memory there. Paths beyond 4,000 bytes are
/// cut.
void Enter(Phase phase, const std::filesystem::path& file);

Phase CurrentPhase();
std::filesystem::path CurrentFile();

/// @return as "reading car.obj".
std::string Describe();

/// @return as "reading car.obj went wrong (REASON); check the model", about what the work is at.
std::string DescribeFailure(const std::exception& error);

inline constexpr double kBytesPerGiB = 1024.0 * 1024.0 * 1024.0;

/// From now on this process keeps in mind, until it turns to something else, when it asked for more memory than it may
/// have. The model library swallows that and gives other reasons.
/// @param limit  what it may have, in bytes
void WatchMemory(std::uint64_t limit);
bool RanOutOfMemory();

/// @return as "reading car.obj needs more than 4 GiB; raise --memory-limit or use a smaller model", about what the work
///         is at.
std::string DescribeShortage();

/// A folder that is to be removed when the work ends early; an empty path when there is none any more.
void SetTemporaryFolder(const std::filesystem::path& folder);

/// Removes the temporary folder that was left behind, if any.
void RemoveTemporaryFolder();

}  // namespace WorkState

}  // namespace Sceneprep
