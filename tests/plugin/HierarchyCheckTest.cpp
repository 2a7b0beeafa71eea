#include <importing/plugin/HierarchyCheck.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace
{

using namespace Importing;

using Indices = std::vector<std::int32_t>;

std::vector<Node> NodesOf(const std::vector<Indices>& childLists)
{
    std::vector<Node> nodes(childLists.size());
    for (std::size_t i = 0; i < nodes.size(); ++i)
        nodes[i].ChildList = childLists[i];
    return nodes;
}

constexpr auto kWalkAll = [](const Node&) { return true; };
constexpr auto kCheckNothing = [](std::int32_t) {};

std::size_t Levels(const std::vector<Node>& nodes, std::int32_t start)
{
    return CheckHierarchy(nodes, start, kWalkAll, kCheckNothing);
}

TEST(CheckHierarchy, CountsLevelsFromTheStartNode)
{
    const std::vector<Node> nodes = NodesOf({{1, 2}, {}, {3}, {}});
    EXPECT_EQ(Levels(nodes, 0), 3U);
    EXPECT_EQ(Levels(nodes, 2), 2U);
    EXPECT_EQ(Levels(nodes, 1), 1U);
}

TEST(CheckHierarchy, ChecksEveryWalkedNodeOnceParentsFirst)
{
    Indices checked;
    CheckHierarchy(NodesOf({{1, 2, 1}, {3}, {3}, {}, {}}), 0, kWalkAll,
                   [&checked](std::int32_t node) { checked.push_back(node); });
    EXPECT_EQ(checked, (Indices{0, 1, 3, 2}));
}

TEST(CheckHierarchy, LeavesEveryWalkedNodeOnceChildrenFirst)
{
    Indices left;
    CheckHierarchy(NodesOf({{1, 2, 1}, {3}, {3}, {}, {}}), 0, kWalkAll, kCheckNothing,
                   [&left](std::int32_t node) { left.push_back(node); });
    EXPECT_EQ(left, (Indices{3, 1, 2, 0}));
}

TEST(CheckHierarchy, NodesBelowASkippedNodeAreSkipped)
{
    std::vector<Node> nodes = NodesOf({{1}, {99, 1}});
    nodes[1].SetAnimationID(0);
    const auto isStatic = [](const Node& node) { return node.GetAnimationID() < 0; };
    EXPECT_EQ(CheckHierarchy(nodes, 0, isStatic, kCheckNothing), 1U);
    EXPECT_EQ(CheckHierarchy(nodes, 1, isStatic, kCheckNothing), 0U);
}

TEST(CheckHierarchy, NodeWithTwoParentsIsNotACycle) { EXPECT_EQ(Levels(NodesOf({{1, 2}, {2}, {}}), 0), 3U); }

TEST(CheckHierarchy, CycleIsReported)
{
    EXPECT_THROW(Levels(NodesOf({{0}}), 0), std::runtime_error);
    EXPECT_THROW(Levels(NodesOf({{1}, {2}, {1}}), 0), std::runtime_error);
    EXPECT_EQ(Levels(NodesOf({{}, {1}}), 0), 1U) << "a cycle elsewhere does not matter";
}

TEST(CheckHierarchy, BadIndexIsRefused)
{
    EXPECT_THROW(Levels(NodesOf({{}}), 1), std::out_of_range);
    EXPECT_THROW(Levels(NodesOf({{}}), -1), std::out_of_range);
    EXPECT_THROW(Levels(NodesOf({{1}, {2}}), 0), std::out_of_range);
    EXPECT_THROW(Levels(NodesOf({{-1}}), 0), std::out_of_range);
}

TEST(CheckHierarchy, ExceptionOfTheCheckIsPassedOn)
{
    EXPECT_THROW(CheckHierarchy(NodesOf({{1}, {}}), 0, kWalkAll,
                                [](std::int32_t node) {
                                    if (node == 1)
                                        throw std::logic_error("node 1");
                                }),
                 std::logic_error);
}

TEST(CheckHierarchy, DeepHierarchyDoesNotOverflowTheStack)
{
    constexpr std::size_t kLevels = 250000;
    std::vector<Node> nodes(kLevels);
    for (std::size_t i = 1; i < kLevels; ++i)
        nodes[i - 1].ChildList = {static_cast<std::int32_t>(i)};
    EXPECT_EQ(Levels(nodes, 0), kLevels);
}

}  // namespace
