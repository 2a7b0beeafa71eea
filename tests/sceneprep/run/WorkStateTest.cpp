#include <sceneprep/run/WorkState.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>
#include <unistd.h>

#include <new>
#include <stdexcept>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

TEST(WorkState, DescribesTheWork)
{
    WorkState state;
    state.Enter(WorkState::Phase::Reading, "a.obj");
    EXPECT_EQ(state.Describe(), "reading a.obj");
    state.Enter(WorkState::Phase::Writing, "b.glb");
    EXPECT_EQ(state.Describe(), "writing b.glb");
    state.Enter(WorkState::Phase::Written, "b.glb");
    EXPECT_EQ(state.Describe(), "reporting on b.glb");
    state.Enter(WorkState::Phase::Preparing, "c");
    EXPECT_EQ(state.Describe(), "preparing c");
    EXPECT_EQ(state.CurrentPhase(), WorkState::Phase::Preparing);
}

TEST(WorkState, DescribesErrorsInOneLine)
{
    WorkState state;
    state.Enter(WorkState::Phase::Reading, "a.obj");
    EXPECT_EQ(state.DescribeError(std::runtime_error("two\nlines")),
              "reading a.obj failed: two lines; check the model");
    EXPECT_EQ(state.DescribeError(ToolError("cannot read a.obj")), "cannot read a.obj");
    EXPECT_EQ(state.DescribeError(std::bad_alloc()), state.DescribeShortage());
}

TEST(WorkState, IsSharedWithTheParentProcess)
{
    WorkState state;
    state.Enter(WorkState::Phase::Starting, {});
    const pid_t child = fork();
    if (child == 0)
    {
        state.Enter(WorkState::Phase::Reading, "from/the/child.obj");
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(state.CurrentFile(), "from/the/child.obj");
}

TEST(WorkState, CutsLongPaths)
{
    WorkState state;
    state.Enter(WorkState::Phase::Reading, std::string(10000, 'x'));
    EXPECT_EQ(state.CurrentFile().string(), std::string(4000, 'x'));
}

TEST(WorkState, RecordsFailedAllocations)
{
    WorkState state;
    state.Enter(WorkState::Phase::Reading, "a.obj");
    EXPECT_EQ(state.DescribeShortage(),
              "reading a.obj needs more memory than there is; raise --memory-limit or use a smaller model");
    state.WatchMemory(std::uint64_t{3} << 29);
    state.Enter(WorkState::Phase::Starting, "a.obj");
    EXPECT_EQ(state.DescribeShortage(), "starting sceneprep needs more than 1.5 GiB; raise --memory-limit");
    state.Enter(WorkState::Phase::Reading, "a.obj");
    EXPECT_EQ(state.DescribeShortage(),
              "reading a.obj needs more than 1.5 GiB; raise --memory-limit or use a smaller model");
    EXPECT_FALSE(state.RanOutOfMemory());
    EXPECT_THROW(std::get_new_handler()(), std::bad_alloc);
    EXPECT_TRUE(state.RanOutOfMemory());
    state.Enter(WorkState::Phase::Reading, "next.obj");
    EXPECT_FALSE(state.RanOutOfMemory());
    EXPECT_THROW(std::get_new_handler()(), std::bad_alloc);
    EXPECT_TRUE(state.RanOutOfMemory());
    state.Reset();
    EXPECT_FALSE(state.RanOutOfMemory());
}

TEST(WorkState, StopsWatchingAtItsEnd)
{
    {
        WorkState state;
        state.WatchMemory(1);
        EXPECT_NE(std::get_new_handler(), nullptr);
    }
    EXPECT_EQ(std::get_new_handler(), nullptr);
}

TEST(WorkState, RemovesTheTemporaryFolderOnce)
{
    WorkState state;
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "half");
    folder.Write("half/written.glb", "x");
    state.SetTemporaryFolder(folder / "half");
    state.RemoveTemporaryFolder();
    EXPECT_FALSE(std::filesystem::exists(folder / "half"));
    std::filesystem::create_directory(folder / "half");
    state.RemoveTemporaryFolder();
    EXPECT_TRUE(std::filesystem::exists(folder / "half"));
}

}  // namespace
