#include <brindle/ShowDebugMessage.h>
#include <importing/plugin/SceneContainer.h>
#include <support/Expectations.h>
#include <support/RecordingContainer.h>
#include <support/SameScene.h>
#include <support/SceneText.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace Importing;
using Support::MeshOf;
using Support::NodeIndex;
using Support::NodeNamed;
using Support::Scene;
using Support::ToText;
using Support::Translation;

/// Flattens everything below the root into the root.
void Flatten(SceneContainer& scene, int minSurfaces = 100, bool ignoreAnimation = true)
{
    const int root = scene.GetRootNodeIndex();
    EXPECT_EQ(
        scene.FlatHierarchy(root, Transform::Indentity, root, Transform::Indentity, minSurfaces, -1, ignoreAnimation),
        0);
}

/// Collects the messages to the host during its lifetime.
class Messages
{
public:
    Messages()
    {
        ShowDebugMessage.SetSink([this](const char* text, int value) {
            texts.emplace_back(text);
            values.push_back(value);
        });
    }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;
    ~Messages() { ShowDebugMessage.SetSink({}); }

    std::vector<std::string> texts;
    std::vector<int> values;
};

const std::vector<std::string> kTwoMessages = {"Flatten node finished :", "Merging finished :"};

TEST(FlatHierarchy, OnePassKeepsEverySecondLevelOfAChain)
{
    SceneContainer scene = Scene("Root( P( Q( R[box] ) ) )");
    Flatten(scene);
    EXPECT_EQ(ToText(scene), "Root[box] | Q");
    EXPECT_EQ(scene.GetRootNodeIndex(), 0);
}

TEST(FlatHierarchy, OnePassKeepsEverySecondLevelOfFourUnderTheTarget)
{
    SceneContainer scene = Scene("Root( A[a]( B[b]( C[c]( D[d] ) ) ) )");
    Flatten(scene);
    EXPECT_EQ(ToText(scene), "Root[d c b a]( A ) | C");
}

TEST(FlatHierarchy, CallingAgainCollapsesMore)
{
    SceneContainer scene = Scene("Root( A( B[box]( C ) ) )");
    Flatten(scene);
    EXPECT_EQ(ToText(scene), "Root[box] | B");
    SceneContainer wider = Scene("Root( A( B C( D ) ) )");
    Flatten(wider);
    EXPECT_EQ(ToText(wider), "Root( A( C ) )");
    Flatten(wider);
    EXPECT_EQ(ToText(wider), "Root( A )");
    Flatten(wider);
    EXPECT_EQ(ToText(wider), "Root");
}

TEST(FlatHierarchy, ANodeWithACollapsedChildIsKeptWithoutObjectsAndWithItsOtherChildren)
{
    SceneContainer scene = Scene("Root( A[a]{eye}<sun>( Leaf Kept* ) )");
    Flatten(scene, 100, false);
    EXPECT_EQ(ToText(scene), "Root[a]{eye}<sun>( A( Kept* ) )");
}

TEST(FlatHierarchy, ALeafThatIsNotAnimatedIsAlwaysCollapsed)
{
    SceneContainer scene = Scene("Root( Leaf[box] Other* )");
    Flatten(scene, 100, false);
    EXPECT_EQ(ToText(scene), "Root[box]( Other* )");
}

TEST(FlatHierarchy, AnAnimatedLeafIsKeptUnlessAnimationIsIgnored)
{
    SceneContainer scene = Scene("Root( Leaf*[box] )");
    Flatten(scene, 100, false);
    EXPECT_EQ(ToText(scene), "Root( Leaf*[box] )");
    Flatten(scene, 100, true);
    EXPECT_EQ(ToText(scene), "Root[box]");
}

TEST(FlatHierarchy, AnAnimatedNodeIsKeptWithAllNodesBelowIt)
{
    SceneContainer scene = Scene("Root( Still[a] Moving*( Below[b]( Deeper[c] ) ) )");
    Flatten(scene, 100, false);
    EXPECT_EQ(ToText(scene), "Root[a]( Moving*( Below[b]( Deeper[c] ) ) )");
}

TEST(FlatHierarchy, AnAnimatedStartNodeMovesNothingButSurfacesAreMergedAndMessagesSent)
{
    SceneContainer scene = Scene("Root*[a b]( Leaf[c] )");
    Messages messages;
    Flatten(scene, 0, false);
    EXPECT_EQ(ToText(scene), "Root*[a]( Leaf[c] )");
    EXPECT_EQ(messages.texts, kTwoMessages);
}

TEST(FlatHierarchy, TheTargetsOwnObjectsAreNotTransformed)
{
    SceneContainer scene = Scene("Root@5,0,0[own]( Leaf@10,0,0[moved] )");
    const D3DXMATRIX up = Translation(0, 100, 0);
    scene.FlatHierarchy(0, up, 0, Translation(0, 0, 1000), 100, -1, true);
    EXPECT_EQ(ToText(scene), "Root[own moved]");
    EXPECT_EQ(Support::Low(MeshOf(scene, "own")), D3DXVECTOR3(1, 1, 1));
    EXPECT_EQ(Support::Low(MeshOf(scene, "moved")), D3DXVECTOR3(11, 101, 1001));
}

TEST(FlatHierarchy, AnotherStartNodeIsMovedWithStartMatrixAndTargetMatrixAndErased)
{
    SceneContainer scene = Scene("Root( Target Start@7,0,0[box] )");
    scene.FlatHierarchy(NodeIndex(scene, "Target"), Translation(0, 100, 0), NodeIndex(scene, "Start"),
                        Translation(10, 0, 0), 100, -1, true);
    EXPECT_EQ(ToText(scene), "Root( Target[box] )");
    // The local matrix of the start node is not part of the product.
    EXPECT_EQ(Support::Low(MeshOf(scene, "box")), D3DXVECTOR3(11, 101, 1));
}

TEST(FlatHierarchy, AnotherStartNodeIsKeptIfOneOfItsChildrenWasCollapsed)
{
    SceneContainer scene = Scene("Root( Target Start[box]( Leaf[lid] ) )");
    scene.FlatHierarchy(1, Transform::Indentity, 2, Transform::Indentity, 100, -1, true);
    EXPECT_EQ(ToText(scene), "Root( Target[lid box] Start )");
}

TEST(FlatHierarchy, ATargetBelowTheStartNodeIsRemovedFromItsParentIfNoneOfItsChildrenCollapsed)
{
    SceneContainer scene = Scene("Root( Target Leaf[box] )");
    scene.FlatHierarchy(1, Transform::Indentity, 0, Transform::Indentity, 100, -1, true);
    EXPECT_EQ(ToText(scene), "Root | Target[box]");
}

TEST(FlatHierarchy, MatricesAccumulateFromTheNodeUpwards)
{
    SceneContainer scene = Scene("Root( Outer( Inner@1,0,0[box]{eye}<sun> ) )");
    NodeNamed(scene, "Outer").SetLocalTransform(Transform(Support::Scaling(2, 2, 2)));
    Flatten(scene);
    EXPECT_EQ(Support::Low(MeshOf(scene, "box")), D3DXVECTOR3(4, 2, 2));
    EXPECT_EQ(Support::High(MeshOf(scene, "box")), D3DXVECTOR3(6, 4, 4));
    EXPECT_EQ(scene.CameraLibrary[0].GetOffsetMatrix().GetMatrix()._41, 2);
    EXPECT_EQ(scene.LightLibrary[0].GetOffsetMatrix().GetMatrix()._41, 2);
    EXPECT_EQ(scene.LightLibrary[0].GetOffsetMatrix().GetMatrix()._11, 2);
}

TEST(FlatHierarchy, WhenOnlyTheRootRemainsItBecomesNodeZero)
{
    SceneContainer scene = Scene("Leaf[a] | Other[b] | Root");
    NodeNamed(scene, "Root").ChildList = {0, 1};
    scene.SetRootNodeIndex(2);
    Flatten(scene);
    ASSERT_EQ(scene.NodeLibrary.size(), 1U);
    EXPECT_EQ(scene.GetRootNodeIndex(), 0);
    EXPECT_EQ(ToText(scene), "Root[a b]");
}

TEST(FlatHierarchy, WhenOnlyTheRootRemainsItsChildListDoesNotChange)
{
    SceneContainer scene = Scene("Root( Leaf[a] )");
    scene.FlatHierarchy(0, Transform::Indentity, 1, Transform::Indentity, 100, -1, true);
    EXPECT_EQ(ToText(scene), "Root[a]( ? )");
}

TEST(FlatHierarchy, OrphansDoNotChange)
{
    SceneContainer scene = Scene("Root( Leaf[a] ) | Orphan[b]( Child[c] )");
    Flatten(scene);
    EXPECT_EQ(ToText(scene), "Root[a] | Orphan[b]( Child[c] )");
}

TEST(FlatHierarchy, TheRootNodeIndexIsUpdatedIfErasingMovesTheRoot)
{
    SceneContainer scene = Scene("Target( Leaf[box] ) | Root( &Target )");
    scene.SetRootNodeIndex(2);
    scene.FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, 100, -1, true);
    EXPECT_EQ(ToText(scene), "Root( Target[box] )");
    EXPECT_EQ(scene.GetRootNodeIndex(), 1);
}

TEST(FlatHierarchy, MergesTheTargetsSurfacesByTheGivenLimits)
{
    SceneContainer scene = Scene("Root[a:red]( P[b:red c:blue] Q[d:red] )");
    EXPECT_EQ(scene.FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, 2, 16, true), 0);
    EXPECT_EQ(ToText(scene), "Root[a c d]");
    EXPECT_EQ(MeshOf(scene, "a").VertexArray.size(), 16U);
}

TEST(FlatHierarchy, MessagesAreSentEvenWhenNothingWasCollapsed)
{
    SceneContainer scene = Scene("Root");
    Messages messages;
    Flatten(scene);
    EXPECT_EQ(messages.texts, kTwoMessages);
    ASSERT_EQ(messages.values.size(), 2U);
    for (const int milliseconds : messages.values)
    {
        EXPECT_GE(milliseconds, 0);
        EXPECT_LT(milliseconds, 10000);
    }
}

TEST(FlatHierarchy, ANodeWithTwoParentsIsQueuedTwice)
{
    SceneContainer scene = Scene("Root( P( D[box] ) Q( &D ) ) | Spare");
    std::vector<std::uint32_t> erased;
    EXPECT_EQ(scene.FlatHierarchyInternal(0, Transform::Indentity, 0, Transform::Indentity, erased, true), 0);
    EXPECT_EQ(erased, (std::vector<std::uint32_t>{2, 2}));
    EXPECT_EQ(ToText(scene), "Root[box]( P Q ) | D | Spare");
}

TEST(FlatHierarchy, TheSecondErasureOfANodeWithTwoParentsErasesTheNodeThatMovedIntoItsPlace)
{
    SceneContainer scene = Scene("Root( P( D[box] ) Q( &D ) ) | Spare | Other");
    Flatten(scene);
    EXPECT_EQ(ToText(scene), "Root[box]( P Q ) | Spare");
}

TEST(FlatHierarchy, TheSecondErasureOfALastNodeWithTwoParentsIsRefused)
{
    SceneContainer scene = Scene("Root( P Q )");
    scene.NodeLibrary.emplace_back();
    scene.NodeLibrary[1].ChildList = {3};
    scene.NodeLibrary[2].ChildList = {3};
    Support::ExpectThrow<std::out_of_range>([&] { Flatten(scene); }, "invalid vector<T> subscript");
    EXPECT_EQ(ToText(scene), "Root( P Q )");
}

TEST(FlatHierarchyInternal, AppendsCollapsedNodesChildrenBeforeParents)
{
    SceneContainer scene = Scene("Root( A( B( C ) D* ) E )");
    std::vector<std::uint32_t> erased{77};
    EXPECT_EQ(scene.FlatHierarchyInternal(0, Transform::Indentity, 0, Transform::Indentity, erased, false), 1);
    EXPECT_EQ(erased, (std::vector<std::uint32_t>{77, 3, 1, 5}));
    EXPECT_EQ(ToText(scene), "Root | A( B D* ) | C | E");
}

TEST(FlatHierarchyInternal, ReturnsWhetherTheNodeItselfStays)
{
    const auto result = [](const char* text, int target, int node, bool ignoreAnimation) {
        SceneContainer scene = Scene(text);
        std::vector<std::uint32_t> erased;
        return scene.FlatHierarchyInternal(target, Transform::Indentity, node, Transform::Indentity, erased,
                                           ignoreAnimation);
    };
    EXPECT_EQ(result("Root( Leaf )", 0, 1, true), 0);
    EXPECT_EQ(result("Root( Leaf* )", 0, 1, false), 1);
    EXPECT_EQ(result("Root( P( Leaf ) )", 0, 1, true), 1);
    EXPECT_EQ(result("Root( Leaf )", 0, 0, true), 1);
    EXPECT_EQ(result("Root", 0, 0, true), 0);
}

TEST(FlatHierarchy, ABadIndexChangesNothing)
{
    const auto flatten = [](SceneContainer& scene, int target, int start) {
        Support::ExpectBadIndex(scene, [&] {
            scene.FlatHierarchy(target, Transform::Indentity, start, Translation(1, 2, 3), 0, -1, true);
        });
    };
    const SceneContainer good = Scene("Root[a]( P[b]( Q[c]{eye}<sun> ) R[d] )");
    for (const auto& [target, start] : std::vector<std::pair<int, int>>{{0, 4}, {4, 0}, {-1, 0}, {0, -1}})
    {
        SceneContainer scene(good);
        flatten(scene, target, start);
    }
    for (std::vector<std::int32_t> Node::*list :
         {&Node::SurfaceList, &Node::ChildList, &Node::CameraList, &Node::LightList})
        for (const int index : {-1, 99})
        {
            SceneContainer scene(good);
            (NodeNamed(scene, "Q").*list).push_back(index);
            flatten(scene, 0, 0);
        }
    SceneContainer scene(good);
    Support::SurfaceNamed(scene, "d").SetGeometryID(-1);
    flatten(scene, 0, 0);
}

/// Returns the scene after flattening, where surface "a" has the given mesh index.
SceneContainer FlattenedWithMeshOfA(const char* text, int mesh, int minSurfaces)
{
    SceneContainer scene = Scene(text);
    Support::SurfaceNamed(scene, "a").SetGeometryID(mesh);
    EXPECT_EQ(scene.FlatHierarchy(0, Transform::Indentity, 0, Transform::Indentity, minSurfaces, -1, true), 0);
    return scene;
}

TEST(FlatHierarchy, ABadMeshOfTheTargetChangesNothingIfMergingLooksItUp)
{
    for (const int mesh : {-1, 99})
        for (const char* text : {"Root[a:red b:red]( P@1,0,0[c:red] )", "Root[a:red]( P@1,0,0( Q[c:red] ) )",
                                 "Root[b:red a:red]( P@1,0,0[c:red] )"})
        {
            SceneContainer scene = Scene(text);
            Support::SurfaceNamed(scene, "a").SetGeometryID(mesh);
            Support::ExpectBadIndex(scene, [&] { Flatten(scene, 2); });
        }
}

TEST(FlatHierarchy, ABadMeshOfTheTargetIsNotAnErrorIfMergingDoesNotLookItUp)
{
    EXPECT_EQ(ToText(FlattenedWithMeshOfA("Root[a:red]( P[b:blue] Q[c:blue] )", 99, 2)), "Root[a b]");
    EXPECT_EQ(ToText(FlattenedWithMeshOfA("Root[a:red b:red]( P[c:red] )", -1, 4)), "Root[a b c]");
    EXPECT_EQ(ToText(FlattenedWithMeshOfA("Root[b:red c:red d:blue e:blue a:grey]( P[f:pink] )", 99, -1)),
              "Root[b a f]");
}

TEST(FlatHierarchy, ACycleIsReportedEvenIfTheTargetHasABadMesh)
{
    SceneContainer scene = Scene("Root[a]( P( Q( &P ) ) )");
    Support::SurfaceNamed(scene, "a").SetGeometryID(99);
    Support::ExpectCycle(scene, [&] { Flatten(scene); });
}

TEST(FlatHierarchy, ACycleChangesNothing)
{
    for (const char* text : {"Root[a]( P[b]( Q[c]( &P ) ) )", "Root( P[a] Q[b]( &Root ) )", "Root( P[a]( &P ) )"})
    {
        SceneContainer scene = Scene(text);
        Support::ExpectCycle(scene, [&] { Flatten(scene); });
    }
}

TEST(FlatHierarchy, ACycleBelowAnAnimatedNodeIsNotAnError)
{
    SceneContainer scene = Scene("Root( P[a] Moving*( Q( &Moving ) ) )");
    Flatten(scene, 100, false);
    EXPECT_EQ(ToText(scene), "Root[a]( Moving*( Q( &Moving ) ) )");
}

TEST(FlatHierarchy, AMillionLevelsDoNotOverflowTheStack)
{
    SceneContainer scene = Support::Chain(Support::kDeep);
    scene.GeometryLibrary.push_back(Support::UnitBox());
    scene.SurfaceLibrary.resize(1);
    scene.SurfaceLibrary[0].SetGeometryID(0);
    scene.NodeLibrary.back().SurfaceList.push_back(0);
    Flatten(scene);
    EXPECT_EQ(scene.NodeLibrary.size(), Support::kDeep / 2);
    EXPECT_EQ(scene.NodeLibrary[0].SurfaceList, std::vector<std::int32_t>{0});
    EXPECT_EQ(Support::Low(scene.GeometryLibrary[0]).x, static_cast<float>(Support::kDeep));
}

TEST(FlatHierarchyOverrides, EveryLevelIsACallAndObjectsMoveInOrder)
{
    Support::RecordingContainer scene(Scene("Root[a]( P[b]( Q[c] ) R*[d] )"));
    Flatten(scene, 100, false);
    EXPECT_EQ(scene.Calls({"FlatHierarchyInternal", "MoveSurfaces", "MoveCameras", "MoveLights", "MergeSurfaces",
                           "EraseNodeFromLibrary", "SetRootNodeIndex"}),
              "FlatHierarchyInternal(0,0,false) FlatHierarchyInternal(0,1,false) FlatHierarchyInternal(0,2,false) "
              "MoveSurfaces(0,2) MoveCameras(0,2) MoveLights(0,2) "
              "MoveSurfaces(0,1) MoveCameras(0,1) MoveLights(0,1) "
              "FlatHierarchyInternal(0,3,false) MergeSurfaces(0,100,-1) EraseNodeFromLibrary(2)");
    EXPECT_EQ(ToText(scene), "Root[a c b]( P R*[d] )");
}

TEST(FlatHierarchyOverrides, NodesAreErasedFromTheLargestDown)
{
    Support::RecordingContainer scene(Scene("Root( A B C ) | Spare"));
    Flatten(scene);
    EXPECT_EQ(scene.Calls({"EraseNodeFromLibrary", "SetRootNodeIndex"}),
              "EraseNodeFromLibrary(3) EraseNodeFromLibrary(2) EraseNodeFromLibrary(1)");
}

TEST(FlatHierarchyOverrides, WhenOnlyTheRootRemainsNothingIsErasedOneByOne)
{
    Support::RecordingContainer scene(Scene("Root( A B )"));
    Flatten(scene);
    EXPECT_EQ(scene.Calls({"EraseNodeFromLibrary", "SetRootNodeIndex"}), "SetRootNodeIndex(0)");
    EXPECT_EQ(scene.NodeLibrary.size(), 1U);
}

TEST(FlatHierarchyOverrides, APlainContainerEndsInTheSameScene)
{
    const SceneContainer scene =
        Scene("Root@1,2,3[a:red]( P@1,0,0[b:red]( Q[c:red]{eye} ) R*[d]( S[e] ) ) | T( U<sun> )");
    SceneContainer plain(scene);
    Support::RecordingContainer derived(scene);
    Flatten(plain, 2, false);
    Flatten(derived, 2, false);
    EXPECT_TRUE(Support::SameScene(plain, derived));
}

TEST(FlatHierarchyOverrides, AChildListThatAnOverrideEmptiesIsCheckedAgain)
{
    class Emptying : public Support::DerivedContainer
    {
    public:
        using DerivedContainer::DerivedContainer;
        int FlatHierarchyInternal(int target, const D3DXMATRIX& targetMatrix, int node, const D3DXMATRIX& matrix,
                                  std::vector<std::uint32_t>& erased, bool ignoreAnimation) override
        {
            if (node == target)
                return SceneContainer::FlatHierarchyInternal(target, targetMatrix, node, matrix, erased,
                                                             ignoreAnimation);
            NodeLibrary[0].ChildList.clear();
            return 0;
        }
    };
    Emptying scene(Scene("Root( A B )"));
    EXPECT_THROW(Flatten(scene), std::out_of_range);
}

}  // namespace
