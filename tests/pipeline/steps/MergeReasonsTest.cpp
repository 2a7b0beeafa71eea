#include <pipeline/steps/MergeReasons.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/TestScene.h>
#include <pipeline/steps/FlattenScene.h>

#include <string>
#include <vector>

namespace
{

using namespace Pipeline;
using PipelineTests::TestScene;
using testing::ElementsAre;

/// Returns each group as "count reason material subject: surfaces", the largest first.
std::vector<std::string> Groups(TestScene& scene, const PrepareOptions& options)
{
    const MergeReasons reasons = FindMergeReasons(scene, options);
    std::vector<std::string> texts;
    std::size_t surplus = 0;
    for (const MergeReasonGroup& group : reasons.groups)
    {
        std::string text =
            std::to_string(group.count) + ' ' + NameOf(group.reason) + ' ' + group.material + ' ' + group.subject + ':';
        for (const UnmergedSurface& surface : group.surfaces)
            text += ' ' + surface.node + '/' + surface.mesh;
        texts.push_back(text);
        surplus += group.count;
    }
    EXPECT_EQ(surplus, reasons.drawCalls - reasons.needed);
    return texts;
}

TEST(MergeReasons, NameTheAnimatedNode)
{
    TestScene scene("Root( A[a=m:c] B[b=n:e] X*( C[d=o:c] D[e=p:e] Y*[f=q:c] ) )");
    FlattenScene(scene, {.flatten = true});
    EXPECT_THAT(Groups(scene, {.flatten = true}),
                ElementsAre("1 animated-node c X: X/o", "1 animated-node e X: X/p", "1 animated-node c Y: Y/q"));
    const MergeReasons reasons = FindMergeReasons(scene, {.flatten = true});
    EXPECT_EQ(reasons.drawCalls, 5U);
    EXPECT_EQ(reasons.needed, 2U);
    EXPECT_EQ(reasons.groups[0].surfaces[0].surface, Support::NodeNamed(scene.container, "X").SurfaceList[0]);
}

TEST(MergeReasons, OneSurfaceOfAMaterialNeedsNone)
{
    TestScene scene("Root( X*[a=m:c] Y*[b=n:c] )");
    EXPECT_THAT(Groups(scene, {.flatten = true}), ElementsAre("1 animated-node c Y: Y/n"));
    TestScene single("Root( X*[a=m:c] Y*[b=n:e] Z )");
    EXPECT_THAT(Groups(single, {.flatten = true}), ElementsAre());
}

TEST(MergeReasons, TellKeptAndFrozenNodesFromAnimatedOnes)
{
    TestScene scene("Root[a=m:c]( K[b=n:c] F[d=o:c]( G[e=p:c] ) )");
    scene.supplement.keptNodes = {false, true};
    scene.supplement.frozenNodes = {false, false, true, true};
    EXPECT_THAT(Groups(scene, {.flatten = true}), ElementsAre("2 kept-by-name c F: F/o G/p", "1 kept-node c K: K/n"));
}

TEST(MergeReasons, NameWhatForbidsMerging)
{
    TestScene scene("Root[a=m:c b=n:c d=o:c e=p:c f=p:c]");
    Support::MeshOf(scene.container, "b").JointArray.resize(1);
    Support::MeshOf(scene.container, "d").SetPolySize(2);
    scene.supplement.pinnedMeshes = {false, false, true};
    scene.supplement.sharedMeshes = {false, false, false, true};
    EXPECT_THAT(Groups(scene, {.flatten = true}),
                ElementsAre("2 shared-mesh c : Root/p Root/p", "1 skinned c : Root/n", "1 points-or-lines c : Root/o"));
    Support::MeshOf(scene.container, "d").SetPolySize(3);
    EXPECT_THAT(Groups(scene, {.flatten = true}), testing::Contains("1 morph-targets c : Root/o"));
}

TEST(MergeReasons, NameTheLimits)
{
    TestScene limited("Root[a=m:c b=n:c d=o:c]");
    const PrepareOptions limit = {.flatten = true, .maxVertices = 16};
    FlattenScene(limited, limit);
    EXPECT_THAT(Groups(limited, limit), ElementsAre("1 vertex-limit c : Root/o"));

    TestScene few("Root[a=m:c b=n:c]");
    const PrepareOptions many = {.flatten = true, .minSurfaces = 3, .maxVertices = 16};
    FlattenScene(few, many);
    EXPECT_THAT(Groups(few, many), ElementsAre("1 minimum-count c : Root/n"));

    TestScene wide("Root( A[a=m:c] B@50,0,0[b=n:c] )");
    const PrepareOptions cells = {.flatten = true, .cellSize = 10};
    FlattenScene(wide, cells);
    EXPECT_THAT(Groups(wide, cells), ElementsAre("1 other-cell c : Root/n"));

    TestScene layered("Root[a=m:c b=n:c]");
    layered.container.SurfaceLibrary[1].MapList.resize(1);
    FlattenScene(layered, {.flatten = true});
    EXPECT_THAT(Groups(layered, {.flatten = true}), ElementsAre("1 texture-layers c : Root/n"));
}

TEST(MergeReasons, SayThatFlatteningWasNotRun)
{
    TestScene scene("Root( A[a=m:c] B[b=n:c] C[d=o] D[e] )");
    EXPECT_THAT(Groups(scene, {.weld = true}), ElementsAre("1 not-flattened c : B/n", "1 not-flattened  : D/e"));
}

TEST(MergeReasons, ListOnlyTheFirstSurfacesOfAGroup)
{
    std::string text = "Root( ";
    for (int i = 0; i < 150; ++i)
        text += "N" + std::to_string(i) + "[s" + std::to_string(i) + ":c] ";
    TestScene scene(text + ")");
    const MergeReasons reasons = FindMergeReasons(scene, {});
    ASSERT_EQ(reasons.groups.size(), 1U);
    EXPECT_EQ(reasons.groups[0].count, 149U);
    EXPECT_EQ(reasons.groups[0].surfaces.size(), MergeReasonGroup::kMostListed);
}

TEST(MergeReasons, HaveTexts)
{
    EXPECT_EQ(TextOf(MergeReason::AnimatedNode, "rotor"), "below animated node 'rotor'");
    EXPECT_EQ(TextOf(MergeReason::VertexLimit, ""), "vertex limit");
}

TEST(MergeReasons, AnEmptySceneHasNone)
{
    TestScene scene(Importing::SceneContainer{});
    EXPECT_THAT(Groups(scene, {.flatten = true}), ElementsAre());
}

}  // namespace
