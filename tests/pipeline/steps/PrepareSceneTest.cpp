#include <pipeline/steps/PrepareScene.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/TestScene.h>

#include <stdexcept>

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

TEST(PrepareScene, KeepsTheWorldOfNestedMirroredNodes)
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

TEST(PrepareScene, AcceptsASceneWithoutARoot)
{
    SceneContainer scene;
    PrepareScene(scene);
    EXPECT_TRUE(scene.NodeLibrary.empty());
}

}  // namespace
