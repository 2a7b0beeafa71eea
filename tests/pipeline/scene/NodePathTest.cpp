#include <pipeline/scene/NodePath.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using Pipeline::NodePath;
using testing::ElementsAre;

// 0( 1( 2 3( 4 ) ) 5 ), and 6 apart
const std::vector<int> kParents = {-1, 0, 1, 1, 3, 0, -1};

TEST(NodePath, ListsTheNodesUpToTheRoot)
{
    const NodePath path(kParents, 4);
    EXPECT_THAT(path.Nodes(), ElementsAre(4, 3, 1, 0));
    EXPECT_TRUE(path.Holds(3));
    EXPECT_FALSE(path.Holds(2));
}

TEST(NodePath, FindsTheNearestCommonAncestor)
{
    NodePath path(kParents, 4);
    EXPECT_EQ(path.HeightOfMeeting(4), 0U);
    EXPECT_EQ(path.HeightOfMeeting(2), 2U);
    EXPECT_EQ(path.HeightOfMeeting(5), 3U);
    EXPECT_EQ(path.HeightOfMeeting(5), 3U) << "the second time from memory";
    EXPECT_EQ(path.HeightOfMeeting(6), 4U) << "never";
    EXPECT_EQ(path.HeightOfMeeting(-1), 4U);
}

}  // namespace
