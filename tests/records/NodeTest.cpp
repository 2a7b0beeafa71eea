#include <importing/records/Node.h>

#include <math/FloatBits.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace
{

using Importing::Node;
using Importing::Transform;
using Support::SameBitsOrNaN;

using Indices = std::vector<std::int32_t>;

constexpr const char* kName = "node, a name longer than fifteen characters";

Transform Placement()
{
    D3DXVECTOR3 translation(1, 2, 3);
    Transform transform;
    transform.SetEuler(translation, D3DXVECTOR3(4, 5, 6), D3DXVECTOR3(7, 8, 9));
    return transform;
}

Node Filled()
{
    Node node;
    node.SetName(kName);
    node.SetNote("note");
    node.SetLocalTransform(Placement());
    node.SetAnimationID(6);
    node.SurfaceList = {1, 2};
    node.ChildList = {3};
    node.CameraList = {4, 5, 6};
    node.LightList = {7};
    return node;
}

void ExpectFilled(Node& node)
{
    EXPECT_EQ(node.GetName(), kName);
    EXPECT_EQ(node.GetNote(), "note");
    EXPECT_TRUE(SameBitsOrNaN(node.GetLocalTransform().GetStoredForm(), Placement().GetStoredForm()));
    EXPECT_EQ(node.GetAnimationID(), 6);
    EXPECT_EQ(node.SurfaceList, (Indices{1, 2}));
    EXPECT_EQ(node.ChildList, (Indices{3}));
    EXPECT_EQ(node.CameraList, (Indices{4, 5, 6}));
    EXPECT_EQ(node.LightList, (Indices{7}));
}

TEST(Node, Defaults)
{
    Node node;
    EXPECT_EQ(node.GetName(), "");
    EXPECT_EQ(node.GetNote(), "");
    EXPECT_EQ(node.GetLocalTransform().GetType(), Transform::Type::Matrix);
    EXPECT_TRUE(SameBitsOrNaN(node.GetLocalTransform().GetMatrix(), Transform::Indentity));
    EXPECT_EQ(node.GetAnimationID(), -1);
    EXPECT_TRUE(node.SurfaceList.empty() && node.ChildList.empty() && node.CameraList.empty() &&
                node.LightList.empty());
}

TEST(Node, SettersStore)
{
    Node node = Filled();
    ExpectFilled(node);
    EXPECT_EQ(node.GetLocalTransform().GetType(), Transform::Type::Euler) << "the form is kept";
}

TEST(Node, CopiesAndMovesHaveEveryField)
{
    Node original = Filled();
    Node copy(original);
    ExpectFilled(copy);
    copy.ChildList.clear();
    copy.SetName("changed");
    ExpectFilled(original);
    Node assigned;
    assigned = original;
    ExpectFilled(assigned);
    Node moved(std::move(assigned));
    ExpectFilled(moved);
    Node moveAssigned;
    moveAssigned = std::move(moved);
    ExpectFilled(moveAssigned);
}

TEST(Node, SwappedNodesHaveExchangedTheirContent)
{
    Node a = Filled();
    Node b;
    std::swap(a, b);
    ExpectFilled(b);
    EXPECT_EQ(a.GetName(), "");
    EXPECT_TRUE(a.SurfaceList.empty());
    EXPECT_EQ(a.GetAnimationID(), -1);
}

TEST(Node, SelfAssignmentChangesNothing)
{
    Node node = Filled();
    Node& same = node;
    node = same;
    ExpectFilled(node);
}

TEST(Node, ReleaseEmptiesNamesAndLists)
{
    Node node = Filled();
    node.Release();
    EXPECT_EQ(node.GetName(), "");
    EXPECT_EQ(node.GetNote(), "");
    EXPECT_TRUE(node.SurfaceList.empty());
    EXPECT_TRUE(node.ChildList.empty());
    EXPECT_TRUE(node.CameraList.empty());
    EXPECT_TRUE(node.LightList.empty());
}

TEST(Node, ReleaseKeepsLocalTransformAndAnimation)
{
    Node node = Filled();
    node.Release();
    EXPECT_TRUE(SameBitsOrNaN(node.GetLocalTransform().GetStoredForm(), Placement().GetStoredForm()));
    EXPECT_EQ(node.GetAnimationID(), 6);
}

}  // namespace
