#include <sceneprep/run/ChildProcess.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <new>
#include <vector>

namespace
{

using namespace Sceneprep;

TEST(ChildProcess, ReturnsTheResult)
{
    const ChildResult result = RunInChildProcess(0, [] { return 7; });
    EXPECT_EQ(result.status, 7);
    EXPECT_EQ(result.killedBy, 0);
    EXPECT_EQ(result.interruptedBy, 0);
}

TEST(ChildProcess, ReportsACrash)
{
    const ChildResult result = RunInChildProcess(0, [] {
        std::signal(SIGSEGV, SIG_DFL);
        return std::raise(SIGSEGV);
    });
    EXPECT_EQ(result.killedBy, SIGSEGV);
    EXPECT_EQ(result.interruptedBy, 0);
}

TEST(ChildProcess, DoesNotChangeTheParentProcess)
{
    int value = 1;
    RunInChildProcess(0, [&value] {
        value = 2;
        return 0;
    });
    EXPECT_EQ(value, 1);
}

TEST(ChildProcess, AStopRequestReachesTheChild)
{
    const pid_t self = getpid();
    for (const int signal : kStopSignals)
    {
        const ChildResult result = RunInChildProcess(0, [self, signal] {
            kill(self, signal);
            for (;;)
                pause();
            return 0;
        });
        EXPECT_EQ(result.killedBy, SIGTERM);
        EXPECT_EQ(result.interruptedBy, signal);
    }
}

TEST(ChildProcess, IgnoredStopRequestsStayIgnored)
{
    const auto before = std::signal(SIGHUP, SIG_IGN);
    const pid_t self = getpid();
    const ChildResult result = RunInChildProcess(0, [self] {
        kill(self, SIGHUP);
        std::raise(SIGHUP);
        return 5;
    });
    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(result.interruptedBy, 0);
    std::signal(SIGHUP, before);
}

TEST(ChildProcess, RestoresSignalHandlers)
{
    const auto before = std::signal(SIGINT, SIG_IGN);
    RunInChildProcess(0, [] { return 0; });
    EXPECT_EQ(std::signal(SIGINT, before), SIG_IGN);
}

TEST(ChildProcess, TheDefaultLimitIsThreeQuartersOfTheMemory)
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const auto memory = static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE));
    EXPECT_NEAR(static_cast<double>(DefaultMemoryLimit()), 0.75 * memory, 8);
}

#if !defined(IMPORTING_SANITIZE)
TEST(ChildProcess, MoreMemoryThanTheLimitIsRefused)
{
    const auto askForOneGiB = [] {
        try
        {
            std::vector<char> memory;
            memory.reserve(std::size_t{1} << 30);
            return memory.capacity() > 0 ? 0 : 1;
        }
        catch (const std::bad_alloc&)
        {
            return 5;
        }
    };
    EXPECT_EQ(RunInChildProcess(std::uint64_t{1} << 29, askForOneGiB).status, 5);
    EXPECT_EQ(RunInChildProcess(std::uint64_t{1} << 33, askForOneGiB).status, 0);
}
#endif

}  // namespace
