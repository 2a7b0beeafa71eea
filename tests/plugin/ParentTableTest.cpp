#include <importing/plugin/ParentTable.h>

#include <importing/plugin/SceneContainer.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
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

TEST(ParentTable, ContainsTheLowestParentOfEveryNode)
{
    EXPECT_EQ(ParentTable(NodesOf({{1, 3}, {2}, {3, 3}, {}})), (Indices{-1, 0, 1, 0}));
    EXPECT_TRUE(ParentTable({}).empty());
}

TEST(ParentTable, BadEntriesAreSkipped) { EXPECT_EQ(ParentTable(NodesOf({{-1, 2, 99, 1}, {}})), (Indices{-1, 0})); }

TEST(ParentTable, AgreesWithTheSearchForOneParent)
{
    for (std::uint32_t seed = 0; seed < 100; ++seed)
    {
        std::mt19937 random(seed);
        SceneContainer scene;
        scene.NodeLibrary.resize(1 + random() % 20);
        const auto count = static_cast<std::uint32_t>(scene.NodeLibrary.size());
        for (std::uint32_t i = 0; i < count; ++i)
            scene.NodeLibrary[random() % count].ChildList.push_back(static_cast<std::int32_t>(random() % (count + 2)) -
                                                                    1);
        const Indices parents = ParentTable(scene.NodeLibrary);
        ASSERT_EQ(parents.size(), count);
        for (std::uint32_t i = 0; i < count; ++i)
            EXPECT_EQ(parents[i], scene.FindParentNode(static_cast<int>(i))) << "seed " << seed;
    }
}

TEST(PathToRoot, LeadsFromTheNodeUpwards)
{
    const Indices parents = {-1, 0, 1, 0};
    EXPECT_EQ(PathToRoot(parents, 2), (Indices{2, 1, 0}));
    EXPECT_EQ(PathToRoot(parents, 0), (Indices{0}));
}

TEST(PathToRoot, PathThroughAllNodesIsNotACycle) { EXPECT_EQ(PathToRoot({1, 2, -1}, 0), (Indices{0, 1, 2})); }

TEST(PathToRoot, CycleAboveTheNodeIsReported)
{
    EXPECT_THROW(PathToRoot({0}, 0), std::runtime_error);
    EXPECT_THROW(PathToRoot({1, 0}, 0), std::runtime_error);
    EXPECT_THROW(PathToRoot({1, 2, 1}, 0), std::runtime_error);
}

TEST(PathToRoot, BadIndexIsRefused)
{
    EXPECT_THROW(PathToRoot({-1}, 1), std::out_of_range);
    EXPECT_THROW(PathToRoot({-1}, -1), std::out_of_range);
    EXPECT_THROW(PathToRoot({}, 0), std::out_of_range);
}

}  // namespace
