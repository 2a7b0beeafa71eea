#include <pipeline/steps/RunStep.h>

#include <brindle/ShowDebugMessage.h>
#include <gtest/gtest.h>
#include <pipeline/TestScene.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace
{

using namespace Pipeline;
using PipelineTests::RecordingListener;

TEST(RunStep, AnnouncesTheStepAndItsEnd)
{
    RecordingListener listener;
    const StepResult result = RunStep("weld", listener, [&listener] { listener.lines.emplace_back("run"); });
    EXPECT_EQ(result.name, "weld");
    EXPECT_EQ(listener.lines, (std::vector<std::string>{"begin weld", "run", "finish"}));
}

TEST(RunStep, TimesEachStep)
{
    RecordingListener progress;
    const StepResult result =
        RunStep("wait", progress, [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); });
    EXPECT_GE(result.milliseconds, 20);
    EXPECT_LT(result.milliseconds, 20000);
}

TEST(RunStep, AddsUpMessagesByTextInOrderOfAppearance)
{
    RecordingListener progress;
    const StepResult result = RunStep("talk", progress, [] {
        ShowDebugMessage("b", 1);
        ShowDebugMessage("a", 10);
        ShowDebugMessage("b", 2);
    });
    ASSERT_EQ(result.messages.size(), 2U);
    EXPECT_EQ(result.messages[0].text, "b");
    EXPECT_EQ(result.messages[0].count, 2);
    EXPECT_EQ(result.messages[0].sum, 3);
    EXPECT_EQ(result.messages[1].text, "a");
    EXPECT_EQ(result.messages[1].sum, 10);
}

TEST(RunStep, StopsListeningEvenIfAStepThrows)
{
    RecordingListener progress;
    EXPECT_THROW(RunStep("fail", progress, [] { throw std::runtime_error("no"); }), std::runtime_error);
    ShowDebugMessage("without a listener", 1);  // would write into a destroyed result
}

}  // namespace
