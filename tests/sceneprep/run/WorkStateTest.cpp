#include <sceneprep/run/WorkState.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <unistd.h>

#include <new>
#include <stdexcept>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

TEST(WorkState, SaysWhatIsGoingOn)
{
    WorkState::Enter(WorkState::Phase::Reading, "a.obj");
    EXPECT_EQ(WorkState::Describe(), "reading a.obj");
    WorkState::Enter(WorkState::Phase::Writing, "b.glb");
    EXPECT_EQ(WorkState::Describe(), "writing b.glb");
    WorkState::Enter(WorkState::Phase::Written, "b.glb");
    EXPECT_EQ(WorkState::Describe(), "reporting on b.glb");
    WorkState::Enter(WorkState::Phase::Preparing, "c");
    EXPECT_EQ(WorkState::Describe(), "preparing c");
    EXPECT_EQ(WorkState::CurrentPhase(), WorkState::Phase::Preparing);
}

TEST(WorkState, SaysInOneLineWhatWentWrong)
{
    WorkState::Enter(WorkState::Phase::Reading, "a.obj");
    EXPECT_EQ(WorkState::DescribeFailure(std::runtime_error("two\nlines")),
              "reading a.obj went wrong (two lines); check the model");
}

TEST(WorkState, IsSeenFromTheParentProcess)
{
    WorkState::Enter(WorkState::Phase::Starting, {});
    const pid_t child = fork();
    if (child == 0)
    {
        WorkState::Enter(WorkState::Phase::Reading, "from/the/child.obj");
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WorkState::CurrentFile(), "from/the/child.obj");
}

TEST(WorkState, LongPathsAreCut)
{
    WorkState::Enter(WorkState::Phase::Reading, std::string(10000, 'x'));
    EXPECT_EQ(WorkState::CurrentFile().string(), std::string(4000, 'x'));
}

TEST(WorkState, KeepsInMindThatMemoryRanOut)
{
    WorkState::Reset();
    const std::new_handler before = std::get_new_handler();
    WorkState::Enter(WorkState::Phase::Reading, "a.obj");
    EXPECT_EQ(WorkState::DescribeShortage(),
              "reading a.obj needs more memory than it may have; raise --memory-limit or use a smaller model");
    WorkState::WatchMemory(std::uint64_t{3} << 29);
    EXPECT_EQ(WorkState::DescribeShortage(),
              "reading a.obj needs more than 1.5 GiB; raise --memory-limit or use a smaller model");
    EXPECT_FALSE(WorkState::RanOutOfMemory());
    EXPECT_THROW(std::get_new_handler()(), std::bad_alloc);
    EXPECT_TRUE(WorkState::RanOutOfMemory());
    WorkState::Enter(WorkState::Phase::Reading, "next.obj");
    EXPECT_FALSE(WorkState::RanOutOfMemory());
    EXPECT_THROW(std::get_new_handler()(), std::bad_alloc);
    EXPECT_TRUE(WorkState::RanOutOfMemory());
    std::set_new_handler(before);
    WorkState::Reset();
    EXPECT_FALSE(WorkState::RanOutOfMemory());
}

TEST(WorkState, RemovesWhatWasLeftBehindOnce)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "half");
    folder.Write("half/written.glb", "x");
    WorkState::SetTemporaryFolder(folder / "half");
    WorkState::RemoveTemporaryFolder();
    EXPECT_FALSE(std::filesystem::exists(folder / "half"));
    std::filesystem::create_directory(folder / "half");
    WorkState::RemoveTemporaryFolder();
    EXPECT_TRUE(std::filesystem::exists(folder / "half"));
}

}  // namespace
