#include <pipeline/steps/DropUnreachableNodes.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;
using Support::ToText;

TEST(DropUnreachableNodes, DropsUnreachableNodesAndKeepsTheOrderOfTheOthers)
{
    SceneContainer scene = Scene("Root( A( B ) C ) | Lost( Lost2 )");
    SceneSupplement supplement;
    std::swap(scene.NodeLibrary[0], scene.NodeLibrary[4]);  // the index of a lost node is lower than that of the root
    scene.SetRootNodeIndex(4);
    supplement.nodeKeys = {10, 11, 12, 13, 14};
    DropUnreachableNodes({scene, supplement});
    EXPECT_EQ(supplement.nodeKeys, (std::vector<int>{11, 12, 13, 14}));
    EXPECT_EQ(scene.NodeLibrary.size(), 4U);
    EXPECT_EQ(scene.GetRootNodeIndex(), 3);
    EXPECT_EQ(ToText(scene), "Root( A( B ) C )");
}

}  // namespace
