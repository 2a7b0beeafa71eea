#include <pipeline/steps/PrepareScene.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/TestScene.h>
#include <support/RandomScene.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using PipelineTests::RecordingListener;
using PipelineTests::TestScene;
using SceneprepTests::ExpectSameWorld;
using Support::NodeNamed;
using Support::ToText;
using Titles = std::vector<std::string>;

Titles TitlesOf(const PrepareResult& result)
{
    Titles titles;
    for (const StepResult& step : result.steps)
        titles.push_back(step.name);
    return titles;
}

TEST(PrepareScene, RunsNothingByDefaultOptions)
{
    SceneContainer scene = Support::Scene("Root( A[a] )");
    EXPECT_EQ(TitlesOf(PrepareScene(scene, {})), Titles{});
}

TEST(PrepareScene, RunsTheChosenStepsInTheirOrder)
{
    SceneContainer scene = Support::Scene("Root( A[a=m] B[b=m] )");
    const PrepareOptions options = {.resolveInstances = true,
                                    .repairMirrors = true,
                                    .checkOrientation = true,
                                    .fixCulling = true,
                                    .weld = true,
                                    .normals = true,
                                    .unifyNormals = true,
                                    .uvs = {{"cubic", 0, false}},
                                    .uniqueNames = true,
                                    .flatten = true,
                                    .surfaceNames = true,
                                    .collisionOffsets = true};
    EXPECT_EQ(TitlesOf(PrepareScene(scene, options)),
              (Titles{"Resolve instances", "Repair mirrors", "Check orientation", "Fix culling", "Weld",
                      "Compute normals", "Unify normals", "Generate UVs", "Make names unique", "Flatten",
                      "Name surfaces", "Make surface names unique", "Compute collision offsets"}));
    EXPECT_EQ(scene.NodeLibrary.size(), 1U);
    EXPECT_EQ(scene.NodeLibrary[0].SurfaceList, (std::vector<std::int32_t>{0}));
}

TEST(PrepareScene, RunsTheRecommendedStepsByDefault)
{
    SceneContainer scene = Support::Scene("Root( A[a=m] B[b=m] )");
    EXPECT_EQ(TitlesOf(PrepareScene(scene)),
              (Titles{"Resolve instances", "Repair mirrors", "Weld", "Make names unique", "Flatten", "Name surfaces",
                      "Make surface names unique", "Compute collision offsets"}));
}

TEST(PrepareScene, ResolvesInstancesForStepsThatChangeMeshesOneSurfaceAtATime)
{
    for (const PrepareOptions& options : {PrepareOptions{.repairMirrors = true},
                                          PrepareOptions{.checkOrientation = true}, PrepareOptions{.flatten = true}})
    {
        SceneContainer scene = Support::Scene("Root( A[a=m] B@9,0,0[b=m] )");
        EXPECT_EQ(PrepareScene(scene, options).steps.front().changes, (Changes{{"meshes copied", 1}}));
    }
    SceneContainer scene = Support::Scene("Root( A[a=m] B@9,0,0[b=m] )");
    EXPECT_EQ(TitlesOf(PrepareScene(scene, {.weld = true})), Titles{"Weld"});
}

TEST(PrepareScene, KeepsTheAppearanceOfNestedMirroredNodes)
{
    SceneContainer scene = Support::Scene("Root( A[a]( B[b]( C@1,0,0[c] X*[d] ) ) )");
    NodeNamed(scene, "A").SetLocalTransform(Support::Scaling(-1, 1, 1));
    NodeNamed(scene, "B")
        .SetLocalTransform(Support::Product(Support::Scaling(1, -1, 1), Support::Translation(0, 7, 0)));
    const WorldMeasure before = Measure(scene);
    PrepareScene(scene);
    ExpectSameWorld(Measure(scene), before);
}

TEST(PrepareScene, ReportsProgressAndChanges)
{
    TestScene scene("Root( A( B[a] ) )");
    RecordingListener listener;
    const PrepareResult result =
        PrepareScene(scene.container, {.weld = true, .flatten = true}, scene.supplement, listener);
    EXPECT_EQ(listener.lines,
              (Titles{"begin Resolve instances", "finish", "begin Weld", "finish", "begin Flatten", "finish"}));
    EXPECT_EQ(listener.parts, (std::vector<double>{1}));
    EXPECT_EQ(result.steps[1].changes, (Changes{{"vertices removed", 0}}));
}

TEST(PrepareScene, ChecksTheSceneBeforeItChangesAnything)
{
    SceneContainer scene = Support::Scene("Root( A( B[a] ) )");
    NodeNamed(scene, "B").SurfaceList.push_back(7);
    EXPECT_THROW(PrepareScene(scene), std::out_of_range);
    NodeNamed(scene, "B").SurfaceList.pop_back();
    EXPECT_EQ(ToText(scene), "Root( A( B[a] ) )");
    NodeNamed(scene, "B").ChildList.push_back(0);
    EXPECT_THROW(PrepareScene(scene), std::runtime_error);
}

/// Checks that every entry of the supplement belongs to the record whose name has the same number.
void ExpectEntriesFollow(SceneContainer& scene, const SceneSupplement& supplement)
{
    for (std::size_t node = 0; node < scene.NodeLibrary.size(); ++node)
    {
        const int key = EntryOr(supplement.nodeKeys, node, -1);
        ASSERT_GE(key, 0);
        EXPECT_EQ(scene.NodeLibrary[node].GetName(), "node " + std::to_string(key));
    }
    for (std::size_t mesh = 0; mesh < scene.GeometryLibrary.size(); ++mesh)
    {
        const int key = EntryOr(supplement.meshKeys, mesh, -1);
        if (key >= 0)
        {
            EXPECT_EQ(scene.GeometryLibrary[mesh].GetName(), "mesh " + std::to_string(key));
            EXPECT_EQ(IsPinned(supplement, mesh), key % 5 == 0);
        }
    }
}

class PrepareRandomScenesTest : public testing::TestWithParam<std::uint32_t>
{
protected:
    PrepareRandomScenesTest()
    {
        Support::Dice dice(GetParam());
        scene_ = Support::RandomScene(dice, {.secondReferences = false});
        for (std::size_t node = 0; node < scene_.NodeLibrary.size(); ++node)
        {
            supplement_.nodeKeys.push_back(static_cast<int>(node));
            supplement_.keptNodes.push_back(dice.OneIn(8));
            scene_.NodeLibrary[node].SetName("node " + std::to_string(node));
        }
        for (std::size_t mesh = 0; mesh < scene_.GeometryLibrary.size(); ++mesh)
        {
            supplement_.meshKeys.push_back(static_cast<int>(mesh));
            supplement_.pinnedMeshes.push_back(mesh % 5 == 0);
            scene_.GeometryLibrary[mesh].SetName("mesh " + std::to_string(mesh));
        }
    }

    SceneContainer scene_;
    SceneSupplement supplement_;
};

TEST_P(PrepareRandomScenesTest, KeepAppearanceAndSupplement)
{
    for (const bool ignoreAnimation : {false, true})
    {
        SceneContainer scene = scene_;
        SceneSupplement supplement = supplement_;
        const WorldMeasure before = Measure(scene);
        RecordingListener listener;
        PrepareScene(scene, {.repairMirrors = true, .weld = true, .flatten = true, .ignoreAnimation = ignoreAnimation},
                     supplement, listener);
        ExpectSameWorld(Measure(scene), before);
        ExpectEntriesFollow(scene, supplement);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PrepareRandomScenesTest, testing::Range(0U, 300U));

TEST(PrepareScene, AcceptsASceneWithoutARoot)
{
    SceneContainer scene;
    PrepareScene(scene);
    EXPECT_TRUE(scene.NodeLibrary.empty());
}

}  // namespace
