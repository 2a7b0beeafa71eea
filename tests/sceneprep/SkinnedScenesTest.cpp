#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/steps/PrepareScene.h>
#include <sceneprep/RandomSkins.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/export/ExportModel.h>
#include <sceneprep/import/ImportModel.h>
#include <support/SceneText.h>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using Importing::SceneContainer;

class SkinnedScenesTest : public testing::TestWithParam<std::uint32_t>
{
protected:
    SkinnedScenesTest() : random_(GetParam())
    {
        ImportSkins(random_.Skinned(), Scene());
        for (const int pose : {kRest, 0, 1})
            expected_.push_back(SkinnedShapes(Scene(), pose));
    }

    SceneContainer& Scene() { return random_.Scene(); }

    void Run(SceneContainer& scene, const PrepareOptions& options) { PrepareScene(scene, options); }

    void ExpectSamePoses(SceneContainer& scene, bool withAnimation = true)
    {
        for (const int pose : withAnimation ? std::vector<int>{kRest, 0, 1} : std::vector<int>{kRest})
        {
            SCOPED_TRACE(pose);
            ExpectSameShapes(SkinnedShapes(scene, pose), expected_.at(static_cast<std::size_t>(pose + 1)));
        }
    }

    SceneContainer WrittenAndRead(SceneContainer& scene, const std::string& name)
    {
        Model model;
        *model.scene = scene;
        ExportModel(model, folder_ / name, progress_, state_);
        Model back;
        ImportModel(folder_ / name, back, progress_);
        return *back.scene;
    }

    RandomSkins random_;
    std::vector<Shapes> expected_;
    TemporaryFolder folder_;
    std::ostringstream out_;
    Progress progress_{out_, false};
    WorkState state_;
};

TEST_P(SkinnedScenesTest, FlatteningKeepsEveryPose)
{
    Run(Scene(), {.flatten = true});
    ExpectSamePoses(Scene());
}

TEST_P(SkinnedScenesTest, FlatteningAnimatedNodesKeepsTheShape)
{
    Run(Scene(), {.flatten = true, .ignoreAnimation = true});
    ExpectSamePoses(Scene(), false);
}

TEST_P(SkinnedScenesTest, RepairedMirrorsKeepEveryPose)
{
    for (std::size_t node = 0; node < Scene().NodeLibrary.size(); node += 2)
    {
        Importing::Node& record = Scene().NodeLibrary[node];
        record.SetLocalTransform(
            Importing::Transform(Product(Support::Scaling(1, -1, 1), record.GetLocalTransform().GetMatrix())));
    }
    for (const int pose : {kRest, 0, 1})
        expected_[static_cast<std::size_t>(pose + 1)] = SkinnedShapes(Scene(), pose);
    Run(Scene(), {.repairMirrors = true});
    ExpectSamePoses(Scene());
}

TEST_P(SkinnedScenesTest, SkinsRoundTrip)
{
    SceneContainer back = WrittenAndRead(Scene(), "a.glb");
    ExpectSamePoses(back);
    EXPECT_EQ(CountScene(back).joints, CountScene(Scene()).joints);
    SceneContainer again = WrittenAndRead(back, "b.glb");
    ExpectSamePoses(again);
    EXPECT_EQ(CountScene(again), CountScene(back)) << "nothing grows";
}

TEST_P(SkinnedScenesTest, PreparedSkinsRoundTrip)
{
    PrepareOptions options = RecommendedSteps();
    options.uniqueNames = options.weld = false;  // meshes are compared by name and vertices in order
    Run(Scene(), options);
    SceneContainer back = WrittenAndRead(Scene(), "a.gltf");
    ExpectSamePoses(back);
    Run(back, options);
    ExpectSamePoses(back);
    SceneContainer again = WrittenAndRead(back, "b.gltf");
    Run(again, options);
    ExpectSamePoses(again);
    EXPECT_EQ(CountScene(again), CountScene(back)) << "nothing grows";
}

TEST_P(SkinnedScenesTest, FormatsOfAssimpHoldSkins)
{
    RandomSkins one(GetParam(), 1);
    one.Scene().NodeLibrary[0].SetAnimationID(-1);  // in COLLADA the root has no animation
    ImportSkins(one.Skinned(), one.Scene());
    for (const char* name : {"a.assbin", "a.dae"})
    {
        SCOPED_TRACE(name);
        SceneContainer back = WrittenAndRead(one.Scene(), name);
        ASSERT_EQ(back.GeometryLibrary.size(), 1U);
        back.GeometryLibrary[0].SetName("M0");  // these formats lose the names of meshes
        for (const int pose : {kRest, 0, 1})
            ExpectSameShapes(SkinnedShapes(back, pose), SkinnedShapes(one.Scene(), pose));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SkinnedScenesTest, testing::Range(0U, 40U));

}  // namespace
