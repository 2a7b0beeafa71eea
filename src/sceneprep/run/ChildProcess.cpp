#include <sceneprep/run/ChildProcess.h>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace Sceneprep
{

namespace
{

volatile std::sig_atomic_t runningChild = 0;
volatile std::sig_atomic_t receivedSignal = 0;

extern "C" void EndChild(int signal)
{
    receivedSignal = signal;
    if (runningChild > 0)
        kill(runningChild, SIGTERM);
}

/// While it lives, signals that ask the program to stop reach the child instead.
class StopSignals
{
public:
    StopSignals()
    {
        receivedSignal = 0;
        struct sigaction action = {};
        action.sa_handler = EndChild;
        for (std::size_t i = 0; i < kStopSignals.size(); ++i)
        {
            sigaction(kStopSignals[i], nullptr, &before_[i]);
            if (before_[i].sa_handler != SIG_IGN)
                sigaction(kStopSignals[i], &action, nullptr);
        }
    }
    ~StopSignals()
    {
        for (std::size_t i = 0; i < kStopSignals.size(); ++i)
            sigaction(kStopSignals[i], &before_[i], nullptr);
        runningChild = 0;
    }
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

private:
    std::array<struct sigaction, kStopSignals.size()> before_ = {};
};

void LimitMemory(std::uint64_t bytes)
{
#if !defined(IMPORTING_SANITIZE)
    if (bytes == 0)
        return;
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_AS, &limit);
#else
    static_cast<void>(bytes);
#endif
}

[[noreturn]] void RunAndExit(std::uint64_t memoryLimit, const std::function<int()>& command)
{
    for (const int signal : kStopSignals)
    {
        if (std::signal(signal, SIG_DFL) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    LimitMemory(memoryLimit);
    const int status = command();
    std::cout.flush();
    std::cerr.flush();
    std::exit(status);
}

int WaitFor(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    return status;
}

}  // namespace

std::uint64_t DefaultMemoryLimit()
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0)
        return 0;
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize) / 4 * 3;
}

ChildResult RunInChildProcess(std::uint64_t memoryLimit, const std::function<int()>& command)
{
    std::cout.flush();
    std::fflush(nullptr);  // otherwise both processes would print the buffered text
    const StopSignals signals;
    const pid_t child = fork();
    if (child < 0)
        return {.status = command()};
    if (child == 0)
        RunAndExit(memoryLimit, command);
    runningChild = child;
    if (receivedSignal != 0)  // it came before there was a child to end
        kill(child, SIGTERM);

    const int status = WaitFor(child);
    return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : 0,
            .killedBy = WIFSIGNALED(status) ? WTERMSIG(status) : 0,
            .interruptedBy = receivedSignal};
}

}  // namespace Sceneprep
