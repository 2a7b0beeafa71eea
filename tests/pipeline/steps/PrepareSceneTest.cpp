#include <pipeline/steps/PrepareScene.h>

#include <gtest/gtest.h>
#include <pipeline/ExpectSameWorld.h>
#include <pipeline/TestScene.h>
#include <pipeline/scene/ShownSurfaces.h>
#include <support/RandomScene.h>

#include <algorithm>
#include <array>
#include <cmath>
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

TEST(PrepareScene, SharedMeshesStayOnNodesBelowTheRoot)
{
    TestScene scene("Root( P@1,0,0( A@1,0,0[a=m:c] B@2,0,0[b=m:c x=n:c] ) C[c=m:c y=o:c] )");
    scene.supplement.nodeKeys = {10, 11, 12, 13, 14};
    const WorldMeasure before = Measure(scene.container);
    RecordingListener listener;
    PrepareScene(scene.container, {.keepInstances = 3, .weld = true, .flatten = true}, scene.supplement, listener);
    EXPECT_EQ(ToText(scene.container), "Root[x]( A[a] B[b] C[c] )");
    for (const char* surface : {"a", "b", "c"})
        EXPECT_EQ(Support::SurfaceNamed(scene.container, surface).GetGeometryID(), 0);
    EXPECT_EQ(NodeNamed(scene.container, "B").GetLocalTransform().GetMatrix()._41, 3);
    EXPECT_EQ(scene.supplement.nodeKeys, (std::vector<int>{10, 12, 13, 14}));
    ExpectSameWorld(Measure(scene.container), before);
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

using WorldTriangle = std::array<WorldPoint, 3>;

std::vector<WorldTriangle> WorldTrianglesOf(SceneContainer& scene)
{
    std::vector<WorldTriangle> triangles;
    ForEachShownSurface(scene, [&](const ShownSurface& shown) {
        const auto corner = [&](std::size_t index) {
            return ToWorld(shown.geometry.VertexArray[shown.geometry.IndexArray[index]].GetPosition(), shown.world);
        };
        for (std::size_t i = 0; i + 2 < shown.geometry.IndexArray.size(); i += 3)
            triangles.push_back({corner(i), corner(i + 1), corner(i + 2)});
    });
    return triangles;
}

/// Returns whether two triangles have the same corners, in any order, to `tolerance`.
bool AreNear(const WorldTriangle& a, const WorldTriangle& b, double tolerance)
{
    std::array<std::size_t, 3> order = {0, 1, 2};
    do
    {
        double distance = 0;
        for (std::size_t corner = 0; corner < 3; ++corner)
        {
            for (std::size_t axis = 0; axis < 3; ++axis)
                distance = std::max(distance, std::fabs(a[corner][axis] - b[order[corner]][axis]));
        }
        if (distance <= tolerance)
            return true;
    } while (std::next_permutation(order.begin(), order.end()));
    return false;
}

void ExpectSameTriangles(std::vector<WorldTriangle> actual, const std::vector<WorldTriangle>& expected,
                         double tolerance)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (const WorldTriangle& triangle : expected)
    {
        const auto found = std::find_if(actual.begin(), actual.end(), [&](const WorldTriangle& candidate) {
            return AreNear(candidate, triangle, tolerance);
        });
        ASSERT_NE(found, actual.end());
        actual.erase(found);
    }
}

TEST_P(PrepareRandomScenesTest, ShowTheSameTrianglesWithSharedMeshes)
{
    for (const int keepInstances : {0, 1, 3})
    {
        SceneContainer scene = scene_;
        SceneSupplement supplement = supplement_;
        const WorldMeasure before = Measure(scene);
        RecordingListener listener;
        PrepareScene(scene,
                     {.keepInstances = keepInstances, .repairMirrors = true, .flatten = true, .ignoreAnimation = true},
                     supplement, listener);
        ExpectSameWorld(Measure(scene), before);  // which also compares the side from which faces are seen
        ExpectEntriesFollow(scene, supplement);
        ExpectSameTriangles(WorldTrianglesOf(scene), WorldTrianglesOf(scene_), 1e-5 * before.Extent());
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
