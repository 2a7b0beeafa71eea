#include <importing/plugin/SceneContainer.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace
{

using namespace Importing;

using Indices = std::vector<std::int32_t>;

/// Returns nodes with these child lists, named "0", "1", ...
SceneContainer WithNodes(const std::vector<Indices>& childLists)
{
    SceneContainer scene;
    for (std::size_t i = 0; i < childLists.size(); ++i)
    {
        Node& node = scene.NodeLibrary.emplace_back();
        node.SetName(std::to_string(i));
        node.ChildList = childLists[i];
    }
    return scene;
}

TEST(EraseNodeFromLibrary, LastNodeMovesIntoThePlaceOfTheErasedOne)
{
    SceneContainer scene = WithNodes({{1, 3}, {}, {}, {}});
    scene.EraseNodeFromLibrary(1);
    ASSERT_EQ(scene.NodeLibrary.size(), 3U);
    EXPECT_EQ(scene.NodeLibrary[1].GetName(), "3");
    EXPECT_EQ(scene.NodeLibrary[0].ChildList, (Indices{1}));
}

TEST(EraseNodeFromLibrary, ErasedLastNodeIsRemovedFromChildLists)
{
    SceneContainer scene = WithNodes({{1, 2, 1}, {2, 2}, {}});
    scene.EraseNodeFromLibrary(2);
    EXPECT_EQ(scene.NodeLibrary[0].ChildList, (Indices{1, 1}));
    EXPECT_TRUE(scene.NodeLibrary[1].ChildList.empty());
}

TEST(EraseNodeFromLibrary, RepeatedReferencesAreAllUpdated)
{
    SceneContainer scene = WithNodes({{1, 1, 3, 1, 3, 2}, {}, {}, {}});
    scene.EraseNodeFromLibrary(1);
    EXPECT_EQ(scene.NodeLibrary[0].ChildList, (Indices{1, 1, 2}));
}

TEST(EraseNodeFromLibrary, ChildrenOfTheErasedNodeLoseTheirParent)
{
    SceneContainer scene = WithNodes({{1}, {2}, {}, {}});
    scene.EraseNodeFromLibrary(1);
    EXPECT_EQ(scene.NodeLibrary[2].GetName(), "2");
    EXPECT_EQ(scene.FindParentNode(2), -1);
}

TEST(EraseNodeFromLibrary, ChildListOfTheMovedNodeIsUpdatedToo)
{
    SceneContainer scene = WithNodes({{}, {}, {3, 0}, {1, 2}});
    scene.EraseNodeFromLibrary(0);
    EXPECT_EQ(scene.NodeLibrary[0].ChildList, (Indices{1, 2}));
    EXPECT_EQ(scene.NodeLibrary[2].ChildList, (Indices{0}));
}

TEST(EraseNodeFromLibrary, ObjectsOfTheErasedNodeRemainInTheirLibraries)
{
    SceneContainer scene = WithNodes({{}});
    scene.SurfaceLibrary.resize(1);
    scene.CameraLibrary.resize(1);
    scene.LightLibrary.resize(1);
    scene.NodeLibrary[0].SurfaceList = {0};
    scene.EraseNodeFromLibrary(0);
    EXPECT_EQ(scene.SurfaceLibrary.size() + scene.CameraLibrary.size() + scene.LightLibrary.size(), 3U);
}

TEST(EraseNodeFromLibrary, RootNodeIndexFollowsTheMovedNode)
{
    SceneContainer scene = WithNodes({{}, {}, {0, 1}});
    scene.SetRootNodeIndex(2);
    scene.EraseNodeFromLibrary(0);
    EXPECT_EQ(scene.GetRootNodeIndex(), 0);
}

TEST(EraseNodeFromLibrary, ErasedRootKeepsTheRootNodeIndex)
{
    SceneContainer scene = WithNodes({{}, {}, {}});
    scene.SetRootNodeIndex(1);
    scene.EraseNodeFromLibrary(1);
    EXPECT_EQ(scene.GetRootNodeIndex(), 1) << "the node that moved there";
    scene.SetRootNodeIndex(1);
    scene.EraseNodeFromLibrary(1);
    EXPECT_EQ(scene.GetRootNodeIndex(), 1) << "past the end";
    scene.SetRootNodeIndex(0);
    scene.EraseNodeFromLibrary(0);
    EXPECT_EQ(scene.GetRootNodeIndex(), 0) << "in an empty library";
}

TEST(EraseNodeFromLibrary, OtherRootNodeIndexIsKept)
{
    SceneContainer scene = WithNodes({{}, {}, {}});
    for (const int root : {-1, 0, 99})
    {
        SceneContainer copy(scene);
        copy.SetRootNodeIndex(root);
        copy.EraseNodeFromLibrary(1);
        EXPECT_EQ(copy.GetRootNodeIndex(), root);
    }
}

TEST(EraseNodeFromLibrary, RootNodeIndexIsWrittenDirectly)
{
    class Watched : public SceneContainer
    {
    public:
        void SetRootNodeIndex(int) override { ADD_FAILURE() << "SetRootNodeIndex was called"; }
        int GetRootNodeIndex() const override { return SceneContainer::GetRootNodeIndex(); }
    };
    Watched scene;
    scene.NodeLibrary.resize(3);
    scene.SceneContainer::SetRootNodeIndex(2);
    scene.EraseNodeFromLibrary(0);
    EXPECT_EQ(scene.GetRootNodeIndex(), 0);
}

/// A plain model of erasing: names, child lists and the root, with each rule written separately.
struct ForestModel
{
    std::vector<std::string> names;
    std::vector<Indices> children;
    int root = -1;

    void Erase(int erased)
    {
        const int last = static_cast<int>(names.size()) - 1;
        const auto place = static_cast<std::size_t>(erased);
        names[place] = names.back();
        children[place] = children.back();
        names.pop_back();
        children.pop_back();
        for (Indices& list : children)
        {
            Indices repaired;
            for (const std::int32_t child : list)
            {
                if (child == erased)
                    continue;
                repaired.push_back(child == last ? erased : child);
            }
            list = repaired;
        }
        if (root == last)
            root = erased;
    }
};

TEST(EraseNodeFromLibrary, ErasuresFromRandomForestsAgreeWithThePlainModel)
{
    for (std::uint32_t seed = 0; seed < 300; ++seed)
    {
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t count) {
            return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(count));
        };
        const std::size_t count = 1 + static_cast<std::size_t>(below(30));
        ForestModel model;
        model.children.resize(count);
        for (std::size_t i = 0; i < count; ++i)
        {
            model.names.push_back(std::to_string(i));
            if (i > 0 && below(8) != 0)
                model.children[static_cast<std::size_t>(below(i))].push_back(static_cast<std::int32_t>(i));
        }
        for (int extra = below(5); extra > 0; --extra)  // repeated entries and bad indices
            model.children[static_cast<std::size_t>(below(count))].push_back(below(count + 3) - 1);
        model.root = below(count + 2) - 1;

        SceneContainer scene = WithNodes(model.children);
        scene.SetRootNodeIndex(model.root);
        while (!model.names.empty())
        {
            const int erased = below(model.names.size());
            model.Erase(erased);
            scene.EraseNodeFromLibrary(erased);
            ASSERT_EQ(scene.NodeLibrary.size(), model.names.size()) << "seed " << seed;
            ASSERT_EQ(scene.GetRootNodeIndex(), model.root) << "seed " << seed;
            for (std::size_t i = 0; i < model.names.size(); ++i)
            {
                ASSERT_EQ(scene.NodeLibrary[i].GetName(), model.names[i]) << "seed " << seed;
                ASSERT_EQ(scene.NodeLibrary[i].ChildList, model.children[i]) << "seed " << seed;
            }
        }
    }
}

}  // namespace
