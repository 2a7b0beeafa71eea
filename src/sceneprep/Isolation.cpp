#include <sceneprep/Isolation.h>

#include <fmt/format.h>
#include <sceneprep/run/ChildProcess.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/WorkState.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <string>

namespace Sceneprep
{

namespace
{

using WorkState::Phase;

constexpr int kStoppedBySignal = 128;

std::string CrashText(int signal)
{
    const std::string file = WorkState::CurrentFile().string();
    const std::string reason = strsignal(signal);
    if (WorkState::CurrentPhase() == Phase::Reading)
        return fmt::format("the reader crashed on {} ({}); repair the file or convert it to another format", file,
                           reason);
    return fmt::format("crashed while {} ({}); try other steps or another format", WorkState::Describe(), reason);
}

/// Files appear whole or not at all; only the report may still be missing.
std::string StopText()
{
    if (WorkState::CurrentPhase() == Phase::Written)
        return fmt::format("stopped; {} has been written already", WorkState::CurrentFile().string());
    return "stopped; nothing has been written";
}

/// @return whether the input at which the work crashed could be left out.
bool LeaveOutCurrentInput(PrepareCommand& prepare)
{
    if (!prepare.keepGoing || WorkState::CurrentPhase() != Phase::Reading || prepare.inputs.size() < 2)
        return false;
    const auto input = std::find(prepare.inputs.begin(), prepare.inputs.end(), WorkState::CurrentFile());
    if (input == prepare.inputs.end())
        return false;
    prepare.leftOut.push_back(*input);
    prepare.inputs.erase(input);
    return true;
}

}  // namespace

std::uint64_t MemoryLimitOf(const Options& options)
{
    return options.memoryLimit > 0 ? static_cast<std::uint64_t>(options.memoryLimit * WorkState::kBytesPerGiB)
                                   : DefaultMemoryLimit();
}

int RunIsolated(const Options& options, std::ostream& errors, const std::function<int(const Options&)>& run)
{
    Options now = options;
    for (;;)
    {
        WorkState::Reset();
        const std::uint64_t memoryLimit = MemoryLimitOf(now);
        const ChildResult result = RunInChildProcess(memoryLimit, [&now, &run, memoryLimit] {
            WorkState::WatchMemory(memoryLimit);
            return run(now);
        });
        if (result.killedBy == 0)
            return result.status;

        WorkState::RemoveTemporaryFolder();
        if (result.killedBy == SIGPIPE)
            return kStoppedBySignal + SIGPIPE;  // who read the output has enough of it
        if (result.interruptedBy != 0)
        {
            errors << ErrorLine(StopText());
            return kStoppedBySignal + result.interruptedBy;
        }
        const bool memory = WorkState::RanOutOfMemory();
        errors << ErrorLine(memory ? WorkState::DescribeShortage() : CrashText(result.killedBy));
        if (!LeaveOutCurrentInput(now.prepare))
            return kUnusable;
    }
}

}  // namespace Sceneprep
