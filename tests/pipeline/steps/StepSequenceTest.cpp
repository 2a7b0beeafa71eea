#include <pipeline/steps/StepSequence.h>
#include <sceneprep/run/Progress.h>

#include <brindle/ShowDebugMessage.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <thread>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using Importing::SceneContainer;

TEST(StepSequence, RunsItsStepsInOrderOnTheScene)
{
    StepSequence pipeline;
    pipeline.Add("first", [](SceneContainer& scene) { scene.SetName(scene.GetName() + "1"); });
    pipeline.Add("second", [](SceneContainer& scene) { scene.SetName(scene.GetName() + "2"); });
    EXPECT_EQ(pipeline.StepNames(), (std::vector<std::string>{"first", "second"}));

    SceneContainer scene;
    std::ostringstream out;
    Progress progress(out, false);
    const std::vector<StepResult> results = pipeline.Run(scene, progress);
    EXPECT_EQ(scene.GetName(), "12");
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ(results[1].name, "second");
    EXPECT_EQ(out.str(), "first ...\nsecond ...\n");
}

TEST(StepSequence, KeepsWhatAStepChanged)
{
    StepSequence pipeline;
    pipeline.Add("nothing", [](SceneContainer&) {});
    pipeline.AddCounting("something", [](SceneContainer&) { return Changes{{"nodes renamed", 3}}; });
    SceneContainer scene;
    std::ostringstream out;
    Progress progress(out, false);
    const std::vector<StepResult> results = pipeline.Run(scene, progress);
    EXPECT_TRUE(results[0].changes.empty());
    EXPECT_EQ(results[1].changes, (Changes{{"nodes renamed", 3}}));
}

TEST(StepSequence, HandsOnHowFarAStepHasCome)
{
    StepSequence pipeline;
    pipeline.AddGradual("halfway", [](SceneContainer&, const PartListener& listener) {
        listener(0.5);
        return Changes{{"nodes renamed", 3}};
    });
    SceneContainer scene;
    std::ostringstream out;
    Progress progress(out, true);
    const std::vector<StepResult> results = pipeline.Run(scene, progress);
    EXPECT_NE(out.str().find("halfway ... 50 %"), std::string::npos);
    EXPECT_EQ(results[0].changes, (Changes{{"nodes renamed", 3}}));
}

TEST(StepSequence, TimesEachStep)
{
    std::ostringstream out;
    Progress progress(out, false);
    const StepResult result =
        RunStep("wait", progress, [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); });
    EXPECT_GE(result.milliseconds, 20);
    EXPECT_LT(result.milliseconds, 20000);
}

TEST(StepSequence, AddsUpMessagesByTextInOrderOfAppearance)
{
    std::ostringstream out;
    Progress progress(out, false);
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

TEST(StepSequence, StopsListeningAlsoWhenAStepThrows)
{
    std::ostringstream out;
    Progress progress(out, false);
    EXPECT_THROW(RunStep("fail", progress, [] { throw std::runtime_error("no"); }), std::runtime_error);
    ShowDebugMessage("nobody listens", 1);  // would write into what is gone
}

}  // namespace
