#include <sceneprep/Isolation.h>

#include <fmt/format.h>
#include <sceneprep/run/ChildProcess.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <string>

namespace Sceneprep
{

namespace
{

using Phase = WorkState::Phase;

constexpr int kStoppedBySignal = 128;

std::string CrashText(const WorkState& state, int signal)
{
    const std::string file = state.CurrentFile().string();
    const std::string reason = strsignal(signal);
    if (state.CurrentPhase() == Phase::Reading)
        return fmt::format("the reader crashed on {} ({}); repair the file or convert it to another format", file,
                           reason);
    return fmt::format("crashed while {} ({}); try other steps or another format", state.Describe(), reason);
}

/// The output appears complete or not at all; only reports may be missing after it.
std::string StopText(const WorkState& state)
{
    if (state.CurrentPhase() == Phase::Written)
        return fmt::format("stopped; {} has been written already", state.CurrentFile().string());
    return "stopped; nothing has been written";
}

/// Moves the input that the work crashed on from the options to the crashed inputs.
/// @return whether the work can start again without it.
bool SkipCurrentInput(PrepareCommand& prepare, RunContext& context)
{
    const WorkState& state = context.state;
    if (!prepare.keepGoing || state.CurrentPhase() != Phase::Reading || prepare.inputs.size() < 2)
        return false;
    const auto input = std::find(prepare.inputs.begin(), prepare.inputs.end(), state.CurrentFile());
    if (input == prepare.inputs.end())
        return false;
    context.crashedInputs.push_back(*input);
    prepare.inputs.erase(input);
    return true;
}

}  // namespace

std::uint64_t MemoryLimitOf(const Options& options)
{
    return options.memoryLimit > 0 ? static_cast<std::uint64_t>(options.memoryLimit * kBytesPerGiB)
                                   : DefaultMemoryLimit();
}

int RunIsolated(const Options& options, const RunContext& context, const CommandFunction& run)
{
    Options currentOptions = options;
    RunContext currentContext = context;
    WorkState& state = context.state;
    const std::uint64_t memoryLimit = MemoryLimitOf(options);
    for (;;)
    {
        state.Reset();
        const ChildResult result = RunInChildProcess(memoryLimit, [&] {
            state.WatchMemory(memoryLimit);
            return run(currentOptions, currentContext);
        });
        if (result.killedBy == 0)
            return result.status;

        state.RemoveTemporaryFolder();
        if (result.killedBy == SIGPIPE)
            return kStoppedBySignal + SIGPIPE;  // the reader closed the pipe
        if (result.interruptedBy != 0)
        {
            context.errors << ErrorLine(StopText(state));
            return kStoppedBySignal + result.interruptedBy;
        }
        context.errors << ErrorLine(state.RanOutOfMemory() ? state.DescribeShortage()
                                                           : CrashText(state, result.killedBy));
        if (!SkipCurrentInput(currentOptions.prepare, currentContext))
            return kUnusable;
    }
}

}  // namespace Sceneprep
