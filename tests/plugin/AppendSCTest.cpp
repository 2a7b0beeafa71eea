#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::Scene;
using Support::SurfaceNamed;
using Support::ToText;

using Indices = std::vector<std::int32_t>;

void Append(SceneContainer& scene, SceneContainer other) { EXPECT_EQ(scene.AppendSC(&other), 0); }

/// Adds a surface with one map of this texture, in a new node.
SceneContainer Textured(const std::string& texture)
{
    SceneContainer scene = Scene("Root[a]");
    scene.TextureLibrary.push_back(texture);
    scene.SurfaceLibrary[0].MapList.resize(1);
    scene.SurfaceLibrary[0].MapList[0].SetTextureID(0);
    return scene;
}

TEST(AppendSC, NullReturnsMinusOneAndChangesNothing)
{
    SceneContainer scene = Scene("Root[a:red]( P )");
    const SceneContainer before(scene);
    EXPECT_EQ(scene.AppendSC(nullptr), -1);
    EXPECT_TRUE(Support::SameScene(scene, before));
}

TEST(AppendSC, EmptyToEmptyLeavesASpareNodeAndANewRoot)
{
    SceneContainer scene;
    Append(scene, SceneContainer());
    ASSERT_EQ(scene.NodeLibrary.size(), 2U);
    EXPECT_EQ(scene.GetRootNodeIndex(), 1);
    EXPECT_EQ(scene.NodeLibrary[0].GetName(), "");
    EXPECT_EQ(scene.NodeLibrary[0].GetAnimationID(), -1);
    EXPECT_EQ(scene.NodeLibrary[1].GetName(), "Root");
    EXPECT_EQ(scene.NodeLibrary[1].GetNote(), "Root added after merging");
    EXPECT_TRUE(scene.NodeLibrary[1].ChildList.empty());
    EXPECT_EQ(ToText(scene), "Root | _");
}

TEST(AppendSC, AppendsTheNodesOfTheOtherThenASpareNodeThenTheNewRoot)
{
    SceneContainer scene = Scene("A( B C )");
    Append(scene, Scene("D( E )"));
    ASSERT_EQ(scene.NodeLibrary.size(), 7U);
    EXPECT_EQ(scene.NodeLibrary[3].GetName(), "D");
    EXPECT_EQ(scene.NodeLibrary[3].ChildList, Indices{4});
    EXPECT_EQ(scene.NodeLibrary[4].GetName(), "E");
    EXPECT_EQ(scene.NodeLibrary[5].GetName(), "");
    EXPECT_EQ(scene.NodeLibrary[6].ChildList, (Indices{0, 3}));
    EXPECT_EQ(scene.GetRootNodeIndex(), 6);
    EXPECT_EQ(ToText(scene), "Root( A( B C ) D( E ) ) | _");
}

TEST(AppendSC, AThirdSceneBecomesAFurtherChildOfTheExistingRoot)
{
    SceneContainer scene = Scene("A( B C )");
    Append(scene, Scene("D( E )"));
    Append(scene, Scene("F | G"));
    EXPECT_EQ(scene.GetRootNodeIndex(), 6);
    EXPECT_EQ(scene.NodeLibrary[6].ChildList, (Indices{0, 3, 7}));
    EXPECT_EQ(scene.NodeLibrary.size(), 10U);
    EXPECT_EQ(ToText(scene), "Root( A( B C ) D( E ) F ) | _ | G | _");
}

TEST(AppendSC, ARootWithAnyOtherNoteGetsANewRoot)
{
    SceneContainer scene = Scene("A");
    scene.NodeLibrary[0].SetNote("Root added after merging ");
    Append(scene, Scene("B"));
    EXPECT_EQ(ToText(scene), "Root( A B ) | _");
}

TEST(AppendSC, RootOfAnEarlierCallGetsTheNodeBeforeTheAppendedOnesIfTheOtherHasNoRoot)
{
    SceneContainer scene = Scene("A");
    scene.NodeLibrary[0].SetNote("Root added after merging");
    SceneContainer other = Scene("B");
    other.SetRootNodeIndex(-1);
    Append(scene, other);
    EXPECT_EQ(scene.NodeLibrary[0].ChildList, Indices{0});  // One node before, minus 1.
    EXPECT_EQ(scene.NodeLibrary.size(), 3U);
}

TEST(AppendSC, ScenesWithoutRootAreNotChildrenOfTheNewRoot)
{
    SceneContainer scene = Scene("A");
    scene.SetRootNodeIndex(-1);
    SceneContainer other = Scene("B");
    other.SetRootNodeIndex(-1);
    Append(scene, other);
    EXPECT_EQ(ToText(scene), "Root | A | B | _");
}

TEST(AppendSC, ListsAreShiftedByTheSizesOfTheLibraries)
{
    SceneContainer scene = Scene("A*[a]{e1 e2}<s1>");
    Append(scene, Scene("B*[b c]{e3}<s2 s3>"));
    Node& node = scene.NodeLibrary[1];
    EXPECT_EQ(node.SurfaceList, (Indices{1, 2}));
    EXPECT_EQ(node.CameraList, Indices{2});
    EXPECT_EQ(node.LightList, (Indices{1, 2}));
    EXPECT_EQ(node.GetAnimationID(), 1);
    EXPECT_EQ(scene.AnimationLibrary.size(), 2U);
    EXPECT_EQ(scene.SurfaceLibrary[2].GetGeometryID(), 2);
}

TEST(AppendSC, ListEntriesOfMinusOneAreShiftedToo)
{
    SceneContainer scene = Scene("A[a]{e}<s>( B )");
    SceneContainer other = Scene("C");
    for (Indices* list : {&other.NodeLibrary[0].SurfaceList, &other.NodeLibrary[0].ChildList,
                          &other.NodeLibrary[0].CameraList, &other.NodeLibrary[0].LightList})
        list->push_back(-1);
    Append(scene, other);
    EXPECT_EQ(scene.NodeLibrary[2].SurfaceList, Indices{0});
    EXPECT_EQ(scene.NodeLibrary[2].ChildList, Indices{1});
    EXPECT_EQ(scene.NodeLibrary[2].CameraList, Indices{0});
    EXPECT_EQ(scene.NodeLibrary[2].LightList, Indices{0});
}

TEST(AppendSC, NegativeIndicesOfRecordsDoNotChange)
{
    SceneContainer scene = Scene("A*[a:red]");
    scene.TextureLibrary.emplace_back("wood.png");
    SceneContainer other = Scene("B[b]");
    other.SurfaceLibrary[0].SetGeometryID(-1);
    other.SurfaceLibrary[0].MapList.resize(1);
    other.GeometryLibrary[0].JointArray.resize(1);
    Append(scene, other);
    EXPECT_EQ(scene.SurfaceLibrary[1].GetGeometryID(), -1);
    EXPECT_EQ(scene.SurfaceLibrary[1].GetMaterialID(), -1);
    EXPECT_EQ(scene.SurfaceLibrary[1].MapList[0].GetTextureID(), -1);
    EXPECT_EQ(scene.NodeLibrary[1].GetAnimationID(), -1);
    EXPECT_EQ(scene.GeometryLibrary[1].JointArray[0].GetAnimationID(), -1);
}

TEST(AppendSC, AnimationsOfJointsAreShiftedAndTheirParentsAreNot)
{
    SceneContainer scene = Scene("A*");
    SceneContainer other = Scene("B*[b]");
    other.GeometryLibrary[0].JointArray.resize(2);
    other.GeometryLibrary[0].JointArray[1].SetAnimationID(0);
    other.GeometryLibrary[0].JointArray[1].SetParentID(0);
    Append(scene, other);
    EXPECT_EQ(scene.GeometryLibrary[0].JointArray[1].GetAnimationID(), 1);
    EXPECT_EQ(scene.GeometryLibrary[0].JointArray[1].GetParentID(), 0);
}

TEST(AppendSC, AnEqualMaterialIsNotAddedASecondTime)
{
    SceneContainer scene = Scene("A[a:blue b:red]");
    Append(scene, Scene("B[c:red d:green e:red f:green]"));
    ASSERT_EQ(scene.MaterialLibrary.size(), 3U);
    EXPECT_EQ(SurfaceNamed(scene, "c").GetMaterialID(), 1);
    EXPECT_EQ(SurfaceNamed(scene, "d").GetMaterialID(), 2);
    EXPECT_EQ(SurfaceNamed(scene, "e").GetMaterialID(), 1);
    EXPECT_EQ(SurfaceNamed(scene, "f").GetMaterialID(), 2);
    EXPECT_EQ(scene.MaterialLibrary[2].GetName(), "green");
}

TEST(AppendSC, OfEqualMaterialsTheLowestIndexIsUsed)
{
    SceneContainer scene = Scene("A[a:x b:x]");
    scene.MaterialLibrary.resize(3, scene.MaterialLibrary[0]);
    Append(scene, Scene("B[c:x]"));
    EXPECT_EQ(SurfaceNamed(scene, "c").GetMaterialID(), 0);
    EXPECT_EQ(scene.MaterialLibrary.size(), 3U);
}

TEST(AppendSC, UnusedMaterialsAndTexturesAreNotCopied)
{
    SceneContainer scene;
    SceneContainer other = Textured("wood.png");
    other.TextureLibrary.emplace_back("unused.png");
    other.MaterialLibrary.resize(2);
    Append(scene, other);
    EXPECT_TRUE(scene.MaterialLibrary.empty());
    EXPECT_EQ(scene.TextureLibrary, std::vector<std::string>{"wood.png"});
}

TEST(AppendSC, MaterialsOfSurfacesThatNoNodeReferencesAreCopied)
{
    SceneContainer scene;
    SceneContainer other = Scene("B[b:red]");
    other.NodeLibrary[0].SurfaceList.clear();
    Append(scene, other);
    EXPECT_EQ(scene.MaterialLibrary.size(), 1U);
}

TEST(AppendSC, TexturesThatDifferInCaseOrWhiteSpaceAreStoredOnce)
{
    SceneContainer scene = Textured("wood.png");
    Append(scene, Textured("\t Wood.PNG "));
    EXPECT_EQ(scene.TextureLibrary, std::vector<std::string>{"wood.png"});
    EXPECT_EQ(scene.SurfaceLibrary[1].MapList[0].GetTextureID(), 0);
    Append(scene, Textured(" Stone.PNG"));
    EXPECT_EQ(scene.TextureLibrary, (std::vector<std::string>{"wood.png", "stone.png"}));
    EXPECT_EQ(scene.SurfaceLibrary[2].MapList[0].GetTextureID(), 1);
}

TEST(AppendSC, GeometriesSurfacesAnimationsCamerasAndLightsAreNotDeDuplicated)
{
    SceneContainer scene = Scene("A*[a]{e}<s>");
    Append(scene, Scene("A*[a]{e}<s>"));
    EXPECT_EQ(scene.GeometryLibrary.size(), 2U);
    EXPECT_EQ(scene.SurfaceLibrary.size(), 2U);
    EXPECT_EQ(scene.AnimationLibrary.size(), 2U);
    EXPECT_EQ(scene.CameraLibrary.size(), 2U);
    EXPECT_EQ(scene.LightLibrary.size(), 2U);
}

TEST(AppendSC, KeepsItsNameStatusAndReservedList)
{
    SceneContainer scene = Scene("A");
    scene.SetName("mine");
    scene.SetStatus(3);
    scene.ReservedList = {1};
    SceneContainer other = Scene("B");
    other.SetName("theirs");
    other.SetStatus(4);
    other.ReservedList = {2, 3};
    Append(scene, other);
    EXPECT_EQ(scene.GetName(), "mine");
    EXPECT_EQ(scene.GetStatus(), 3);
    EXPECT_EQ(scene.ReservedList, std::vector<std::uint32_t>{1});
}

TEST(AppendSC, TheOtherIsOnlyRead)
{
    SceneContainer scene = Scene("A[a:red]");
    SceneContainer other = Textured("Wood.png");
    other.MaterialLibrary.resize(1);
    other.SurfaceLibrary[0].SetMaterialID(0);
    const SceneContainer before(other);
    scene.AppendSC(&other);
    EXPECT_TRUE(Support::SameScene(other, before));
}

TEST(AppendSC, ASceneAppendedToItselfAppendsItsContentOnEntry)
{
    SceneContainer scene = Scene("A[a:red]( B{e} )");
    SceneContainer expected(scene);
    Append(expected, scene);
    EXPECT_EQ(scene.AppendSC(&scene), 0);
    EXPECT_TRUE(Support::SameScene(scene, expected));
    EXPECT_EQ(ToText(scene), "Root( A[a]( B{e} ) A[a]( B{e} ) ) | _");
}

template <typename Spoil>
void ExpectBothUnchanged(Spoil spoil)
{
    SceneContainer scene = Scene("A[a:red]( B )");
    SceneContainer other = Textured("wood.png");
    other.MaterialLibrary.resize(1);
    other.SurfaceLibrary.push_back(other.SurfaceLibrary[0]);
    spoil(scene, other);
    const SceneContainer before(other);
    Support::ExpectBadIndex(scene, [&] { scene.AppendSC(&other); });
    EXPECT_TRUE(Support::SameScene(other, before));
    Support::DerivedContainer derived(scene);
    Support::ExpectBadIndex(derived, [&] { derived.AppendSC(&other); });
}

TEST(AppendSC, ABadIndexChangesNeitherScene)
{
    ExpectBothUnchanged([](SceneContainer&, SceneContainer& other) { other.SurfaceLibrary[1].SetMaterialID(1); });
    ExpectBothUnchanged(
        [](SceneContainer&, SceneContainer& other) { other.SurfaceLibrary[1].MapList[0].SetTextureID(1); });
    ExpectBothUnchanged([](SceneContainer& scene, SceneContainer&) { scene.SetRootNodeIndex(99); });
}

TEST(AppendSC, AppendingManySurfacesOfManyMaterialsIsNotQuadratic)
{
    SceneContainer other;
    other.SurfaceLibrary.resize(100000);
    other.MaterialLibrary.resize(50000);
    for (std::size_t i = 0; i < other.MaterialLibrary.size(); ++i)
        other.MaterialLibrary[i].SetName(std::to_string(i));
    for (std::size_t i = 0; i < other.SurfaceLibrary.size(); ++i)
        other.SurfaceLibrary[i].SetMaterialID(static_cast<int>(i / 2));
    SceneContainer scene;
    Append(scene, other);
    const std::size_t different = scene.MaterialLibrary.size();
    EXPECT_GT(different, 49900U);  // A few may have equal hashes by chance.
    Append(scene, other);
    EXPECT_EQ(scene.MaterialLibrary.size(), different);
    for (std::size_t i = 0; i < other.SurfaceLibrary.size(); ++i)
        ASSERT_EQ(scene.SurfaceLibrary[i + 100000].GetMaterialID(), scene.SurfaceLibrary[i].GetMaterialID());
}

TEST(AppendSCOverrides, EveryUseOfAMaterialOrTextureIsAnAddition)
{
    SceneContainer other = Scene("B[b:red c:red d]");
    other.TextureLibrary = {"wood.png"};
    for (const std::size_t surface : {0U, 2U})
    {
        other.SurfaceLibrary[surface].MapList.resize(2);
        other.SurfaceLibrary[surface].MapList[1].SetTextureID(0);
    }
    Support::RecordingContainer scene(Scene("A"));
    scene.AppendSC(&other);
    EXPECT_EQ(scene.Calls({"AddMaterialToLibrary", "AddTextureToLibrary", "GetRootNodeIndex", "SetRootNodeIndex",
                           "AddGeometryToLibrary", "AddSurfaceToLibrary", "AddAnimationToLibrary"}),
              R"(AddMaterialToLibrary("red",true) AddTextureToLibrary("wood.png",true) )"
              R"(AddMaterialToLibrary("red",true) AddTextureToLibrary("wood.png",true) )"
              R"(GetRootNodeIndex() SetRootNodeIndex(3))");
}

TEST(AppendSCOverrides, TheRootIsReadAfterEverythingElseIsAppended)
{
    class Late : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        int GetRootNodeIndex() const override { return static_cast<int>(NodeLibrary.size()) - 2; }
    };
    SceneContainer other = Scene("B");
    Late scene(Scene("A"));
    scene.SetRootNodeIndex(99);
    EXPECT_EQ(scene.AppendSC(&other), 0);
    EXPECT_EQ(scene.NodeLibrary.back().ChildList, (Indices{1, 1}));
}

TEST(AppendSCOverrides, AMergeResultKeepsItsRootIndex)
{
    SceneContainer other = Scene("B");
    Support::RecordingContainer scene;
    scene.AppendSC(&other);
    scene.Forget();
    scene.AppendSC(&other);
    EXPECT_EQ(scene.Calls({"SetRootNodeIndex"}), "");
}

TEST(AppendSCOverrides, TheIndicesThatOverridesReturnAreUsed)
{
    class Elsewhere : public Support::DerivedContainer
    {
    public:
        int AddMaterialToLibrary(Material&, bool) override { return 42; }
        int AddTextureToLibrary(const std::string&, bool) override { return 43; }
    };
    SceneContainer other = Textured("wood.png");
    other.MaterialLibrary.resize(1);
    other.SurfaceLibrary[0].SetMaterialID(0);
    Elsewhere scene;
    scene.AppendSC(&other);
    EXPECT_EQ(scene.SurfaceLibrary[0].GetMaterialID(), 42);
    EXPECT_EQ(scene.SurfaceLibrary[0].MapList[0].GetTextureID(), 43);
}

TEST(AppendSCOverrides, TheRootOfADerivedOtherIsReadThroughTheVirtualTable)
{
    class Rooted : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        int GetRootNodeIndex() const override { return 1; }
    };
    Rooted other(Scene("B( C )"));
    SceneContainer scene;
    scene.AppendSC(&other);
    EXPECT_EQ(scene.NodeLibrary.back().ChildList, Indices{1});
}

TEST(AppendSC, AnIndexNearTheLimitWrapsAround)
{
    SceneContainer other = Scene("Root");
    other.NodeLibrary[0].ChildList = {std::numeric_limits<std::int32_t>::max()};
    SceneContainer scene = Scene("A( B )");
    scene.AppendSC(&other);
    EXPECT_EQ(scene.NodeLibrary[2].ChildList, Indices{std::numeric_limits<std::int32_t>::min() + 1});
}

}  // namespace
