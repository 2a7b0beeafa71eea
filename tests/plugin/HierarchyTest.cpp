#include <importing/plugin/SceneContainer.h>

#include <math/FloatBits.h>
#include <math/RandomFloats.h>
#include <support/RecordingContainer.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::RandomFloats;
using Support::SameBitsOrNaN;

D3DXMATRIX Moved(float x, float y, float z) { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1}; }

/// Returns nodes with these parents, -1 for none. Node i is translated by (i + 1, 0, 0).
SceneContainer WithParents(const std::vector<int>& parents)
{
    SceneContainer scene;
    scene.NodeLibrary.resize(parents.size());
    for (std::size_t i = 0; i < parents.size(); ++i)
    {
        scene.NodeLibrary[i].SetLocalTransform(Transform(Moved(static_cast<float>(i + 1), 0, 0)));
        if (parents[i] >= 0)
            scene.NodeLibrary[static_cast<std::size_t>(parents[i])].ChildList.push_back(static_cast<std::int32_t>(i));
    }
    return scene;
}

template <typename Error>
std::string TextOf(const std::function<void()>& action)
{
    try
    {
        action();
    }
    catch (const Error& error)
    {
        return error.what();
    }
    return "nothing thrown";
}

TEST(FindNodeByName, FirstOfEqualNamesIsFound)
{
    SceneContainer scene;
    scene.NodeLibrary.resize(4);
    scene.NodeLibrary[1].SetName("wheel");
    scene.NodeLibrary[3].SetName("wheel");
    EXPECT_EQ(scene.FindNodeByName("wheel"), 1);
}

TEST(FindNodeByName, NamesAreComparedExactly)
{
    SceneContainer scene;
    scene.NodeLibrary.resize(1);
    scene.NodeLibrary[0].SetName("wheel");
    EXPECT_EQ(scene.FindNodeByName("Wheel"), -1);
    EXPECT_EQ(scene.FindNodeByName("whee"), -1);
    EXPECT_EQ(scene.FindNodeByName("wheels"), -1);
    EXPECT_EQ(scene.FindNodeByName(""), -1);
}

TEST(FindNodeByName, EmptyNameIsFoundToo)
{
    EXPECT_EQ(SceneContainer().FindNodeByName(""), -1);
    EXPECT_EQ(WithParents({-1}).FindNodeByName(""), 0);
}

TEST(FindParentNode, ParentIsTheFirstNodeThatReferencesTheChild)
{
    SceneContainer scene = WithParents({-1, 0, 0, 2});
    scene.NodeLibrary[1].ChildList = {3};
    EXPECT_EQ(scene.FindParentNode(3), 1);
    EXPECT_EQ(scene.FindParentNode(2), 0);
    EXPECT_EQ(scene.FindParentNode(0), -1);
}

TEST(FindParentNode, IndexThatNoNodeReferencesHasNoParent)
{
    const SceneContainer scene = WithParents({-1, 0});
    for (const int index : {2, -1, std::numeric_limits<int>::max()})
        EXPECT_EQ(scene.FindParentNode(index), -1);
    EXPECT_EQ(SceneContainer().FindParentNode(0), -1);
}

TEST(FindParentNode, BadEntryIsFoundToo)
{
    SceneContainer scene = WithParents({-1, -1});
    scene.NodeLibrary[1].ChildList = {-1, 7};
    EXPECT_EQ(scene.FindParentNode(7), 1);
    EXPECT_EQ(scene.FindParentNode(-1), 1);
}

TEST(CalculateGlobalTM, OfARootIsItsLocalMatrix)
{
    SceneContainer scene = WithParents({-1, -1});
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(1), Moved(2, 0, 0)));
}

TEST(CalculateGlobalTM, OfAChildIsLocalTimesParent)
{
    SceneContainer scene = WithParents({-1, 0});
    const D3DXMATRIX scaled(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 10, 0, 0, 1);
    scene.NodeLibrary[0].SetLocalTransform(Transform(scaled));
    scene.NodeLibrary[1].SetLocalTransform(Transform(Moved(1, 2, 3)));
    const D3DXMATRIX expected(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 12, 4, 6, 1);
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(1), expected));
}

TEST(CalculateGlobalTM, LocalTransformMayHaveAnyForm)
{
    SceneContainer scene = WithParents({-1, 0});
    D3DXVECTOR3 translation(5, 6, 7);
    Transform placement;
    placement.SetEuler(translation, D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1));
    scene.NodeLibrary[1].SetLocalTransform(placement);
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(1), Moved(6, 6, 7)));
}

TEST(CalculateGlobalTM, NodeWithTwoParentsUsesTheLowerParent)
{
    SceneContainer scene = WithParents({-1, -1, 1});
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(2), Moved(5, 0, 0)));
    scene.NodeLibrary[0].ChildList = {2};
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(2), Moved(4, 0, 0)));
}

TEST(CalculateGlobalTM, BadIndexIsRefused)
{
    SceneContainer plain = WithParents({-1, 0});
    Support::DerivedContainer derived(plain);
    for (SceneContainer* scene : {&plain, static_cast<SceneContainer*>(&derived)})
        for (const int index : {2, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
            EXPECT_EQ(TextOf<std::out_of_range>([&] { scene->CalculateGlobalTM(index); }),
                      "invalid vector<T> subscript")
                << index;
    SceneContainer empty;
    EXPECT_EQ(TextOf<std::out_of_range>([&] { empty.CalculateGlobalTM(0); }), "invalid vector<T> subscript");
}

TEST(CalculateGlobalTM, BadEntriesAreSkipped)
{
    SceneContainer scene = WithParents({-1, 0});
    scene.NodeLibrary[0].ChildList = {99, -1, 1};
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(1), Moved(3, 0, 0)));
}

TEST(CalculateGlobalTM, CycleIsReported)
{
    const std::string expected = "cycle in the node hierarchy";
    SceneContainer own = WithParents({-1, -1});
    own.NodeLibrary[1].ChildList = {1};
    EXPECT_EQ(TextOf<std::runtime_error>([&] { own.CalculateGlobalTM(1); }), expected);
    EXPECT_TRUE(SameBitsOrNaN(own.CalculateGlobalTM(0), Moved(1, 0, 0))) << "other nodes are not affected";

    SceneContainer ring = WithParents({-1, 0, 1, 2});
    ring.NodeLibrary[2].ChildList.push_back(0);
    for (int node = 0; node < 4; ++node)
        EXPECT_EQ(TextOf<std::runtime_error>([&] { ring.CalculateGlobalTM(node); }), expected) << node;
}

TEST(CalculateGlobalTM, CycleOfAllNodesIsReported)
{
    for (const int count : {1, 2, 3, 50})
    {
        SceneContainer scene = WithParents(std::vector<int>(static_cast<std::size_t>(count), -1));
        for (int i = 0; i < count; ++i)
            scene.NodeLibrary[static_cast<std::size_t>(i)].ChildList = {(i + 1) % count};
        EXPECT_EQ(TextOf<std::runtime_error>([&] { scene.CalculateGlobalTM(0); }), "cycle in the node hierarchy");
    }
}

TEST(CalculateGlobalTM, LongestPathIsNotACycle)
{
    // The path contains all nodes.
    SceneContainer scene = WithParents({1, 2, 3, -1});
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(0), Moved(10, 0, 0)));
}

TEST(CalculateGlobalTM, CallsTheOverridesForParentsAndTheirMatrices)
{
    Support::RecordingContainer scene(WithParents({-1, 0, 1}));
    scene.Forget();
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(2), Moved(6, 0, 0)));
    EXPECT_EQ(scene.Calls({"FindParentNode", "CalculateGlobalTM"}),
              "CalculateGlobalTM(2) FindParentNode(2) CalculateGlobalTM(1) FindParentNode(1) CalculateGlobalTM(0) "
              "FindParentNode(0)");
}

/// Makes every other node a child of the first.
class FlatContainer : public SceneContainer
{
public:
    using SceneContainer::SceneContainer;
    int FindParentNode(int index) const override { return index == 0 ? -1 : 0; }
};

TEST(CalculateGlobalTM, OverriddenParentIsUsed)
{
    FlatContainer scene;
    scene.NodeLibrary = WithParents({-1, 0, 1}).NodeLibrary;
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(2), Moved(4, 0, 0)));
}

TEST(CalculateGlobalTM, DeepHierarchyDoesNotOverflowTheStack)
{
    constexpr std::size_t kLevels = 250000;
    SceneContainer scene;
    scene.NodeLibrary.resize(kLevels);
    for (std::size_t i = 1; i < kLevels; ++i)
        scene.NodeLibrary[i - 1].ChildList = {static_cast<std::int32_t>(i)};
    scene.NodeLibrary[0].SetLocalTransform(Transform(Moved(1, 2, 3)));
    EXPECT_TRUE(SameBitsOrNaN(scene.CalculateGlobalTM(static_cast<int>(kLevels) - 1), Moved(1, 2, 3)));
}

TEST(CalculateGlobalTM, PlainAndDerivedContainersGiveTheSameBits)
{
    RandomFloats random(1);
    for (int round = 0; round < 100; ++round)
    {
        const std::uint32_t count = 1 + random.Integer(25);
        std::vector<int> parents;
        for (std::uint32_t i = 0; i < count; ++i)
            parents.push_back(i == 0 || random.Integer(6) == 0 ? -1 : static_cast<int>(random.Integer(i)));
        SceneContainer plain = WithParents(parents);
        for (Node& node : plain.NodeLibrary)
            node.SetLocalTransform(Transform(random.Matrix(2)));
        plain.NodeLibrary[random.Integer(count)].ChildList.push_back(99);
        Support::DerivedContainer derived(plain);
        for (int node = 0; node < static_cast<int>(count); ++node)
            ASSERT_TRUE(SameBitsOrNaN(plain.CalculateGlobalTM(node), derived.CalculateGlobalTM(node))) << round;
    }
}

}  // namespace
