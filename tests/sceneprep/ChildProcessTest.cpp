#include <sceneprep/ChildProcess.h>

#include <gtest/gtest.h>
#include <sceneprep/Error.h>

#include <csignal>
#include <sstream>

namespace
{

using namespace Sceneprep;

TEST(ChildProcess, HandsTheResultOn)
{
    std::ostringstream errors;
    EXPECT_EQ(RunInChildProcess("model.obj", errors, [] { return 7; }), 7);
    EXPECT_EQ(errors.str(), "");
}

TEST(ChildProcess, ACrashBecomesOneLine)
{
    std::ostringstream errors;
    const auto crash = [] {
        std::signal(SIGSEGV, SIG_DFL);
        return std::raise(SIGSEGV);
    };
    EXPECT_EQ(RunInChildProcess("model.obj", errors, crash), kUnusable);
    EXPECT_EQ(
        errors.str(),
        "sceneprep: the model library crashed on model.obj (Segmentation fault); repair the file or convert it to "
        "another format\n");
}

TEST(ChildProcess, ChangesNothingHere)
{
    std::ostringstream errors;
    int value = 1;
    RunInChildProcess("model.obj", errors, [&value] {
        value = 2;
        return 0;
    });
    EXPECT_EQ(value, 1);
}

#if !defined(__SANITIZE_ADDRESS__)
TEST(ChildProcess, MoreMemoryThanTheMachineHasIsRefused)
{
    std::ostringstream errors;
    const auto askForALot = [] {
        try
        {
            std::vector<char> memory;
            memory.reserve(std::size_t{1} << 46);
            return memory.capacity() > 0 ? 0 : 1;
        }
        catch (const std::bad_alloc&)
        {
            return 5;
        }
    };
    EXPECT_EQ(RunInChildProcess("model.obj", errors, askForALot), 5);
}
#endif

}  // namespace
