#include <gtest/gtest.h>
#include <sceneprep/compare/Appearance.h>
#include <sceneprep/compare/TwoTriangles.h>

#include <algorithm>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

std::size_t CountKind(const Appearance& appearance, PieceKind kind)
{
    return static_cast<std::size_t>(
        std::count_if(appearance.pieces.begin(), appearance.pieces.end(),
                      [&](const Piece& piece) { return appearance.looks[LookOf(piece)].kind == kind; }));
}

TEST(AppearanceTest, HasEverythingThatAViewerShows)
{
    const Appearance appearance = TakeAppearance(TwoTriangles().Read());
    EXPECT_EQ(CountKind(appearance, PieceKind::Triangle), 2U);
    EXPECT_EQ(CountKind(appearance, PieceKind::Camera), 1U);
    EXPECT_EQ(CountKind(appearance, PieceKind::Light), 1U);
    EXPECT_EQ(appearance.looks.size(), 4U);
    EXPECT_EQ(appearance.clips.size(), 1U);
    for (const Look& look : appearance.looks)
        EXPECT_EQ(look.area, look.kind == PieceKind::Triangle ? 0.5 : 0) << look.name;
}

TEST(AppearanceTest, CountsAsAViewerDoes)
{
    const ViewerCounts counts = TakeAppearance(TwoTriangles().Read()).counts;
    EXPECT_EQ(counts.nodes, 5U);
    EXPECT_EQ(counts.drawCalls, 2U);
    EXPECT_EQ(counts.materials, 2U);
    EXPECT_EQ(counts.gpuBytes, 2U * (3 * (12 + 12 + 16) + 3 * 2));
}

TEST(AppearanceTest, InstancesAreOneDrawCallAndNoNodes)
{
    GltfDocument document = TwoTriangles();
    const int places = document.Accessor<float>({0, 0, 0, 0, 5, 0, 0, 9, 0}, "VEC3", 3);
    document.json["extensionsUsed"].push_back("EXT_mesh_gpu_instancing");
    document.json["nodes"][1]["extensions"]["EXT_mesh_gpu_instancing"]["attributes"]["TRANSLATION"] = places;
    const Appearance appearance = TakeAppearance(document.Read());
    EXPECT_EQ(CountKind(appearance, PieceKind::Triangle), 4U);
    EXPECT_EQ(appearance.counts.drawCalls, 2U);
    EXPECT_EQ(appearance.counts.nodes, 5U);
}

TEST(AppearanceTest, ARootThatWasAddedIsNoNode)
{
    GltfDocument document = TwoTriangles();
    document.json["scenes"][0]["nodes"] = {1, 2};
    document.json["nodes"][0].erase("children");
    EXPECT_EQ(TakeAppearance(document.Read()).counts.nodes, 2U);
}

TEST(AppearanceTest, CountsAloneTakeNoPieces)
{
    const Appearance appearance = TakeAppearance(TwoTriangles().Read(), {.countsOnly = true});
    EXPECT_TRUE(appearance.pieces.empty());
    EXPECT_EQ(appearance.counts.drawCalls, 2U);
}

TEST(AppearanceTest, RunsNameTheNodes)
{
    const Appearance appearance = TakeAppearance(TwoTriangles().Read());
    ASSERT_EQ(appearance.runs.size(), 4U);
    EXPECT_EQ(appearance.runs[0].node, "Left");
    EXPECT_EQ(appearance.runs[1].node, "Right");
    EXPECT_EQ(appearance.runs[1].first, 1U);
}

}  // namespace
