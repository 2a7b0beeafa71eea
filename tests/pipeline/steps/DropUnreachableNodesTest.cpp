#include <pipeline/steps/DropUnreachableNodes.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using namespace Pipeline;
using Importing::SceneContainer;
using Support::Scene;
using Support::ToText;

TEST(DropUnreachableNodes, UnreachableNodesGoAndTheOthersKeepTheirOrder)
{
    SceneContainer scene = Scene("Root( A( B ) C ) | Lost( Lost2 )");
    std::swap(scene.NodeLibrary[0], scene.NodeLibrary[4]);  // the root stands behind a lost node
    scene.SetRootNodeIndex(4);
    DropUnreachableNodes(scene);
    EXPECT_EQ(scene.NodeLibrary.size(), 4U);
    EXPECT_EQ(scene.GetRootNodeIndex(), 3);
    EXPECT_EQ(ToText(scene), "Root( A( B ) C )");
}

}  // namespace
