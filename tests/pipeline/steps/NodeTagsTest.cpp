#include <pipeline/steps/NodeTags.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

namespace
{

using Importing::SceneContainer;
using Pipeline::NodeTags;

TEST(NodeTags, TrackMovedNodesAndRestoreTheirNotes)
{
    SceneContainer scene = Support::Scene("Root( A B C )");
    for (Importing::Node& node : scene.NodeLibrary)
        node.SetNote("note of " + node.GetName());
    {
        const NodeTags tags(scene);
        EXPECT_EQ(tags.Origins(), (std::vector<int>{0, 1, 2, 3}));
        scene.EraseNodeFromLibrary(1);
        EXPECT_EQ(tags.Origins(), (std::vector<int>{0, 3, 2}));
    }
    for (Importing::Node& node : scene.NodeLibrary)
        EXPECT_EQ(node.GetNote(), "note of " + node.GetName());
}

}  // namespace
