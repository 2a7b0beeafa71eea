#include <sceneprep/Isolation.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/WorkState.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using Phase = WorkState::Phase;

int Crash()
{
    std::signal(SIGSEGV, SIG_DFL);
    return std::raise(SIGSEGV);
}

class IsolationTest : public testing::Test
{
protected:
    int Run(const CommandFunction& work)
    {
        return RunIsolated(options_, {.out = out_, .errors = errors_, .state = state_}, work);
    }

    Options options_;
    std::ostringstream out_;
    std::ostringstream errors_;
    WorkState state_;
};

TEST_F(IsolationTest, ReturnsTheStatusOfTheCommand)
{
    EXPECT_EQ(Run([](const Options&, const RunContext&) { return kUnusable; }), kUnusable);
    EXPECT_EQ(errors_.str(), "");
}

TEST_F(IsolationTest, NamesTheFileThatTheReaderCrashedOn)
{
    EXPECT_EQ(Run([](const Options&, const RunContext& context) {
                  context.state.Enter(Phase::Reading, "model.obj");
                  return Crash();
              }),
              kUnusable);
    EXPECT_EQ(errors_.str(),
              "sceneprep: the reader crashed on model.obj (Segmentation fault); repair the file or convert it to "
              "another format\n");
}

TEST_F(IsolationTest, RemovesTheTemporaryFolderAfterACrash)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "half");
    EXPECT_EQ(Run([&folder](const Options&, const RunContext& context) {
                  context.state.Enter(Phase::Writing, "out.glb");
                  context.state.SetTemporaryFolder(folder / "half");
                  return Crash();
              }),
              kUnusable);
    EXPECT_EQ(errors_.str(),
              "sceneprep: crashed while writing out.glb (Segmentation fault); try other steps or another format\n");
    EXPECT_EQ(folder.CountEntries(), 0U);
}

/// Crashes on bad.off; otherwise returns kUnusable if an input was skipped.
int ReadInputs(const Options& options, const RunContext& context)
{
    for (const std::filesystem::path& input : options.prepare.inputs)
    {
        context.state.Enter(Phase::Reading, input);
        if (input == "bad.off")
            Crash();
    }
    return context.crashedInputs.empty() ? kDone : kUnusable;
}

TEST_F(IsolationTest, StartsAgainWithoutTheInputIfAskedToKeepGoing)
{
    options_.prepare.inputs = {"a.obj", "bad.off", "b.obj", "bad.off"};
    options_.prepare.keepGoing = true;
    EXPECT_EQ(Run(ReadInputs), kUnusable);
    const std::string lines = errors_.str();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
}

TEST_F(IsolationTest, DoesNotSkipTheLastInput)
{
    options_.prepare.inputs = {"bad.off"};
    options_.prepare.keepGoing = true;
    EXPECT_EQ(Run(ReadInputs), kUnusable);
    const std::string lines = errors_.str();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 1);
}

TEST_F(IsolationTest, PrintsNothingIfTheReaderClosedThePipe)
{
    EXPECT_EQ(Run([](const Options&, const RunContext&) { return std::raise(SIGPIPE); }), 128 + SIGPIPE);
    EXPECT_EQ(errors_.str(), "");
}

TEST_F(IsolationTest, CleansUpAfterAStopSignal)
{
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
    {
        const TemporaryFolder folder;
        std::filesystem::create_directory(folder / "half");
        const pid_t self = getpid();
        EXPECT_EQ(Run([&folder, self, signal](const Options&, const RunContext& context) {
                      context.state.SetTemporaryFolder(folder / "half");
                      kill(self, signal);
                      for (;;)
                          pause();
                      return kDone;
                  }),
                  128 + signal);
        EXPECT_EQ(folder.CountEntries(), 0U);
    }
    EXPECT_EQ(errors_.str(),
              "sceneprep: stopped; nothing has been written\nsceneprep: stopped; nothing has been written\n"
              "sceneprep: stopped; nothing has been written\n");
}

TEST_F(IsolationTest, MentionsTheOutputIfStoppedAfterWritingIt)
{
    const pid_t self = getpid();
    EXPECT_EQ(Run([self](const Options&, const RunContext& context) {
                  context.state.Enter(Phase::Written, "out.glb");
                  kill(self, SIGTERM);
                  for (;;)
                      pause();
                  return kDone;
              }),
              128 + SIGTERM);
    EXPECT_EQ(errors_.str(), "sceneprep: stopped; out.glb has been written already\n");
}

TEST_F(IsolationTest, ComputesTheMemoryLimit)
{
    options_.memoryLimit = 0.5;
    EXPECT_EQ(MemoryLimitOf(options_), std::uint64_t{1} << 29);
    options_.memoryLimit = 0;
    EXPECT_GT(MemoryLimitOf(options_), std::uint64_t{1} << 20);
}

}  // namespace
