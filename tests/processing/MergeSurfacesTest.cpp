#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace
{

using namespace Importing;
using Support::MeshOf;
using Support::Scene;
using Support::SurfaceNamed;
using Support::ToText;

constexpr int kNoLimit = -1;
constexpr std::size_t kBox = 8;  ///< number of vertices of a box

std::size_t VerticesOf(SceneContainer& scene, const std::string& surface)
{
    return MeshOf(scene, surface).VertexArray.size();
}

std::string MeshName(SceneContainer& scene, const std::string& surface) { return MeshOf(scene, surface).GetName(); }

void AddMap(SceneContainer& scene, const std::string& surface, const std::string& type)
{
    Map map;
    map.SetType(type);
    SurfaceNamed(scene, surface).MapList.push_back(map);
}

TEST(MergeSurfaces, ANodeWithFewerThanTwoSurfacesDoesNotChange)
{
    for (const char* text : {"Root", "Root[a:red]"})
        for (const int minSurfaces : {-1, 0, 1, 2})
        {
            SceneContainer scene = Scene(text);
            const SceneContainer before(scene);
            EXPECT_EQ(scene.MergeSurfaces(0, minSurfaces, kNoLimit), 0);
            EXPECT_TRUE(Support::SameScene(scene, before));
        }
}

TEST(MergeSurfaces, WithMinimumZeroEverySurfaceJoinsTheFirstRegardlessOfMaterial)
{
    SceneContainer scene = Scene("Root[a:red b:blue c]");
    AddMap(scene, "b", "bump");
    EXPECT_EQ(scene.MergeSurfaces(0, 0, kNoLimit), 0);
    EXPECT_EQ(ToText(scene), "Root[a]");
    EXPECT_EQ(VerticesOf(scene, "a"), 3 * kBox);
    EXPECT_EQ(MeshOf(scene, "a").IndexArray[36], 8U);
    EXPECT_EQ(MeshOf(scene, "a").IndexArray[72], 16U);
}

TEST(MergeSurfaces, AMaterialOfASingleSurfaceIsNotMerged)
{
    SceneContainer scene = Scene("Root[a:red b:blue c:red]");
    scene.MergeSurfaces(0, 2, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a b]");
    EXPECT_EQ(MeshName(scene, "b"), "b");
}

TEST(MergeSurfaces, SurfacesWithEqualMapsMergeAndOthersDoNot)
{
    SceneContainer scene = Scene("Root[a:red b:red c:red d:red]");
    AddMap(scene, "a", "colour");
    AddMap(scene, "b", "bump");
    AddMap(scene, "c", "colour");
    scene.MergeSurfaces(0, 2, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a b d]");
    EXPECT_EQ(VerticesOf(scene, "a"), 2 * kBox);
}

TEST(MergeSurfaces, FewerSurfacesOfAMaterialThanTheMinimumAreNotMerged)
{
    SceneContainer scene = Scene("Root[a:red b:red c:blue d:blue e:blue]");
    scene.MergeSurfaces(0, 3, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a b c]");
    EXPECT_EQ(MeshName(scene, "a"), "a");
}

TEST(MergeSurfaces, WithMinimumOneASingleSurfaceIsNotABase)
{
    SceneContainer scene = Scene("Root[a:red b:blue c:blue]");
    scene.MergeSurfaces(0, 1, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a b]");
}

TEST(MergeSurfaces, VerticesThatAddUpExactlyToTheLimitAreMerged)
{
    SceneContainer scene = Scene("Root[a b]");
    scene.MergeSurfaces(0, 0, 2 * kBox);
    EXPECT_EQ(ToText(scene), "Root[a]");
}

TEST(MergeSurfaces, StopsAtTheFirstCandidateThatExceedsTheLimit)
{
    SceneContainer scene = Scene("Root[a:red b:red small:red]");
    MeshOf(scene, "small").VertexArray.resize(1);
    scene.MergeSurfaces(0, 2, 2 * kBox - 1);
    // a refuses b and does not try the small surface, which would fit. It then joins b.
    EXPECT_EQ(ToText(scene), "Root[a b]");
    EXPECT_EQ(VerticesOf(scene, "a"), kBox);
    EXPECT_EQ(VerticesOf(scene, "b"), kBox + 1);
}

TEST(MergeSurfaces, TheMeshOfTheBaseLosesItsNameEvenIfTheFirstCandidateIsRefused)
{
    SceneContainer scene = Scene("Root[a b]");
    scene.MergeSurfaces(0, 0, 1);
    EXPECT_EQ(ToText(scene), "Root[a b]");
    EXPECT_EQ(MeshName(scene, "a"), "");
    EXPECT_EQ(MeshName(scene, "b"), "b");  // The last surface has no candidate.
}

TEST(MergeSurfaces, ANegativeLimitMeansNoLimit)
{
    SceneContainer scene = Scene("Root[a b c]");
    scene.MergeSurfaces(0, 0, -7);
    EXPECT_EQ(ToText(scene), "Root[a]");
}

TEST(MergeSurfaces, ALimitOfZeroMergesOnlyEmptyMeshes)
{
    SceneContainer scene = Scene("Root[a b]");
    scene.GeometryLibrary[0].Release();
    scene.GeometryLibrary[1].Release();
    scene.MergeSurfaces(0, 0, 0);
    EXPECT_EQ(ToText(scene), "Root[a]");
}

TEST(MergeSurfaces, TheMergedMeshHasNoName)
{
    SceneContainer scene = Scene("Root[a b]");
    scene.MergeSurfaces(0, 0, kNoLimit);
    EXPECT_EQ(MeshName(scene, "a"), "");
}

TEST(MergeSurfaces, TheBaseKeepsNameMaterialAndMapsAndTheOthersAreEmptiedInPlace)
{
    SceneContainer scene = Scene("Root[a:red b:red]");
    AddMap(scene, "a", "colour");
    AddMap(scene, "b", "colour");
    scene.SurfaceLibrary[1].SetCollisionOffset(4);
    scene.MergeSurfaces(0, 2, kNoLimit);
    ASSERT_EQ(scene.SurfaceLibrary.size(), 2U);
    ASSERT_EQ(scene.GeometryLibrary.size(), 2U);
    Surface& base = scene.SurfaceLibrary[0];
    EXPECT_EQ(base.GetName(), "a");
    EXPECT_EQ(base.GetMaterialID(), 0);
    EXPECT_EQ(base.MapList.size(), 1U);
    Surface& joined = scene.SurfaceLibrary[1];
    EXPECT_EQ(joined.GetName(), "b");
    EXPECT_EQ(joined.GetGeometryID(), -1);
    EXPECT_EQ(joined.GetMaterialID(), -1);
    EXPECT_EQ(joined.GetCollisionOffset(), 0);
    EXPECT_TRUE(joined.MapList.empty());
    EXPECT_TRUE(scene.GeometryLibrary[1].VertexArray.empty());
    EXPECT_TRUE(scene.GeometryLibrary[1].IndexArray.empty());
}

TEST(MergeSurfaces, OnlyTheListOfTheNodeChanges)
{
    SceneContainer scene = Scene("Root[a:red b:red]( P[c:red d:red] )");
    scene.MergeSurfaces(1, 2, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a b]( P[c] )");
}

TEST(MergeSurfaces, SurfacesWithoutMaterialAreOneMaterial)
{
    SceneContainer scene = Scene("Root[a b:red c]");
    scene.MergeSurfaces(0, 2, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a b]");
}

TEST(MergeSurfaces, CountsAreThoseAtTheStart)
{
    // The first base merges two of four red surfaces. For later bases the count is still four.
    SceneContainer scene = Scene("Root[a:red b:red c:red d:red]");
    AddMap(scene, "c", "bump");
    AddMap(scene, "d", "bump");
    scene.MergeSurfaces(0, 4, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a c]");
}

TEST(MergeSurfaces, WithANegativeMinimumASingleSurfaceIsNotABase)
{
    SceneContainer scene = Scene("Root[a:red b:blue c:blue d:green]");
    scene.MergeSurfaces(0, -1, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a b]");
}

TEST(MergeSurfaces, WithANegativeMinimumOneSurfaceMoreThanTheMaterialHadJoinsABase)
{
    SceneContainer scene = Scene("Root[a:red b:red c d e f g]");
    scene.MergeSurfaces(0, -1, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a e]");
    EXPECT_EQ(VerticesOf(scene, "a"), 4 * kBox);
    EXPECT_EQ(VerticesOf(scene, "e"), 3 * kBox);
}

TEST(MergeSurfaces, AMeshSharedByBaseAndCandidateIsEmptiedForBoth)
{
    SceneContainer scene = Scene("Root[a=mesh b=mesh c]");
    scene.MergeSurfaces(0, 0, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a]");
    // The mesh is doubled and emptied with b; then c is appended.
    EXPECT_EQ(VerticesOf(scene, "a"), kBox);
    EXPECT_EQ(SurfaceNamed(scene, "a").GetGeometryID(), 0);
}

TEST(MergeSurfaces, ASharedMeshIsCountedTwiceAgainstTheLimit)
{
    SceneContainer scene = Scene("Root[a=mesh b=mesh]");
    scene.MergeSurfaces(0, 0, 2 * kBox - 1);
    EXPECT_EQ(ToText(scene), "Root[a b]");
    EXPECT_EQ(VerticesOf(scene, "a"), kBox);
}

TEST(MergeSurfaces, AMeshOfAnotherPolySizeIsEmptiedWithoutHavingBeenAppended)
{
    SceneContainer scene = Scene("Root[a b]");
    MeshOf(scene, "b").SetPolySize(4);
    scene.MergeSurfaces(0, 0, kNoLimit);
    EXPECT_EQ(ToText(scene), "Root[a]");
    EXPECT_EQ(VerticesOf(scene, "a"), kBox);
    EXPECT_TRUE(scene.GeometryLibrary[1].VertexArray.empty());
}

TEST(MergeSurfaces, AMeshThatAnotherNodeUsesIsEmptiedForThatNodeToo)
{
    SceneContainer scene = Scene("Root[a b=mesh]( P[c=mesh] )");
    scene.MergeSurfaces(0, 0, kNoLimit);
    EXPECT_EQ(VerticesOf(scene, "c"), 0U);
}

TEST(MergeSurfaces, ComparingComputesTheHashesOfTheMapsOfCandidatesOnly)
{
    SceneContainer scene = Scene("Root[a:red b:red c:red]");
    AddMap(scene, "a", "colour");
    AddMap(scene, "b", "bump");
    AddMap(scene, "c", "bump");
    scene.MergeSurfaces(0, 3, 1);
    EXPECT_FALSE(SurfaceNamed(scene, "a").MapList[0].GetIsHashCodeValid());
    EXPECT_TRUE(SurfaceNamed(scene, "b").MapList[0].GetIsHashCodeValid());
    EXPECT_TRUE(SurfaceNamed(scene, "c").MapList[0].GetIsHashCodeValid());
}

TEST(MergeSurfaces, ABadIndexChangesNothing)
{
    SceneContainer scene = Scene("Root[a b]");
    Support::ExpectBadIndex(scene, [&] { scene.MergeSurfaces(1, 0, kNoLimit); });
    Support::ExpectBadIndex(scene, [&] { scene.MergeSurfaces(-1, 0, kNoLimit); });
    for (const int surface : {-1, 2})
    {
        SceneContainer bad(scene);
        bad.NodeLibrary[0].SurfaceList.push_back(surface);
        Support::ExpectBadIndex(bad, [&] { bad.MergeSurfaces(0, 0, kNoLimit); });
    }
    scene.SurfaceLibrary[1].SetGeometryID(2);
    Support::ExpectBadIndex(scene, [&] { scene.MergeSurfaces(0, 0, kNoLimit); });
}

TEST(MergeSurfaces, ABadMeshOfASurfaceThatIsNotMergedDoesNotMatter)
{
    SceneContainer scene = Scene("Root[a:red b:red c:blue]");
    SurfaceNamed(scene, "c").SetGeometryID(-1);
    EXPECT_EQ(scene.MergeSurfaces(0, 2, kNoLimit), 0);
    EXPECT_EQ(ToText(scene), "Root[a c]");
}

TEST(MergeSurfacesOverrides, MeshesAreErasedImmediatelyAndSurfacesAtTheEndFromTheLargestDown)
{
    Support::RecordingContainer scene(Scene("Root[a:red b:blue c:red d:blue e:red]"));
    scene.MergeSurfaces(0, 2, kNoLimit);
    EXPECT_EQ(scene.Calls({"EraseGeometryFromLibrary", "EraseSurfaceFromLibrary"}),
              "EraseGeometryFromLibrary(2) EraseGeometryFromLibrary(4) EraseGeometryFromLibrary(3) "
              "EraseSurfaceFromLibrary(4) EraseSurfaceFromLibrary(3) EraseSurfaceFromLibrary(2)");
    EXPECT_EQ(ToText(scene), "Root[a b]");
}

TEST(MergeSurfacesOverrides, AnOverrideMayKeepTheMeshes)
{
    class Keeper : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        void EraseGeometryFromLibrary(int) override {}
    };
    Keeper scene(Scene("Root[a b]"));
    scene.MergeSurfaces(0, 0, kNoLimit);
    EXPECT_EQ(scene.GeometryLibrary[0].VertexArray.size(), 2 * kBox);
    EXPECT_EQ(scene.GeometryLibrary[1].VertexArray.size(), kBox);
}

TEST(MergeSurfaces, MergingManySurfacesOfManyMaterialsIsNotQuadratic)
{
    SceneContainer scene;
    scene.NodeLibrary.resize(1);
    scene.GeometryLibrary.resize(100000);
    scene.SurfaceLibrary.resize(100000);
    for (int i = 0; i < 100000; ++i)
    {
        Surface& surface = scene.SurfaceLibrary[static_cast<std::size_t>(i)];
        surface.SetGeometryID(i);
        surface.SetMaterialID(i / 2);
        scene.GeometryLibrary[static_cast<std::size_t>(i)].VertexArray.resize(1);
        scene.NodeLibrary[0].SurfaceList.push_back(i);
    }
    scene.MergeSurfaces(0, 2, kNoLimit);
    EXPECT_EQ(scene.NodeLibrary[0].SurfaceList.size(), 50000U);
    EXPECT_EQ(scene.GeometryLibrary[99998].VertexArray.size(), 2U);
    EXPECT_EQ(scene.GeometryLibrary[99999].VertexArray.size(), 0U);
}

TEST(MergeSurfacesOverrides, ASurfaceListThatAnOverrideEmptiesIsCheckedAgain)
{
    class Emptying : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        void EraseGeometryFromLibrary(int) override { NodeLibrary[0].SurfaceList.clear(); }
    };
    Emptying scene(Scene("Root[a:red b:red]"));
    EXPECT_THROW(scene.MergeSurfaces(0, 2, kNoLimit), std::out_of_range);
}

}  // namespace
