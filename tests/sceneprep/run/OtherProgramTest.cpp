#include <sceneprep/run/OtherProgram.h>

#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>

#include <csignal>

namespace
{

using Sceneprep::RunOtherProgram;

TEST(OtherProgram, ReturnsTheExitStatus)
{
    EXPECT_EQ(RunOtherProgram({"true"}), 0);
    EXPECT_EQ(RunOtherProgram({"sh", "-c", "exit 7"}), 7);
    EXPECT_EQ(RunOtherProgram({"sh", "-c", "kill -TERM $$"}), 128 + SIGTERM);
}

TEST(OtherProgram, PassesArgumentsUnchanged)
{
    const SceneprepTests::TemporaryFolder folder;
    const std::string file = (folder / "a b").string();
    EXPECT_EQ(RunOtherProgram({"sh", "-c", "printf '%s|' \"$@\" >\"$0\"", file, "x y", "$z", ""}), 0);
    EXPECT_EQ(SceneprepTests::ReadText(file), "x y|$z||");
}

TEST(OtherProgram, StdoutGoesToStderr)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    RunOtherProgram({"echo", "text"});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "text\n");
}

TEST(OtherProgram, AMissingProgramHasNoStatus)
{
    EXPECT_EQ(RunOtherProgram({"sceneprep-no-such-program"}), std::nullopt);
}

}  // namespace
