#include <sceneprep/import/gltf/NodeTree.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;

std::string SceneOf(const std::string& text, const GltfReadOptions& options = {})
{
    return Support::ToText(*GltfDocument::Parse(text).Read(options).scene);
}

std::string ProblemOf(const std::string& text, const GltfReadOptions& options = {})
{
    return GltfDocument::Parse(text).Problem(options);
}

TEST(NodeTree, RefusesNodesThatAreNoForest)
{
    EXPECT_EQ(ProblemOf(R"({"nodes":[{"children":[2]},{"children":[2]},{}]})"),
              "nodes[1].children[0]: node 2 is already a child of node 0");
    EXPECT_EQ(ProblemOf(R"({"nodes":[{},{"children":[2]},{"children":[1]}]})"),
              "nodes[1]: the node is its own ancestor");
    EXPECT_EQ(ProblemOf(R"({"nodes":[{"children":[0]}]})"), "nodes[0]: the node is its own ancestor");
    EXPECT_EQ(ProblemOf(R"({"nodes":[{"children":[7]}]})"), "nodes[0].children[0]: 7 is not below 1");
    EXPECT_EQ(ProblemOf(R"({"scenes":[{"nodes":[1]}],"nodes":[{"children":[1]},{}]})"),
              "scenes[0].nodes[0]: node 1 is not a root but a child of node 0");
    EXPECT_EQ(ProblemOf(R"({"scenes":[{"nodes":[0,0]}],"nodes":[{}]})"), "scenes[0].nodes[1]: node 0 is listed twice");
}

TEST(NodeTree, TheDefaultSceneIsReadUnlessAnotherOneIsChosen)
{
    const std::string scenes = R"("scenes":[{"nodes":[0]},{"name":"0","nodes":[1]},{"name":"Town","nodes":[2]}],
        "nodes":[{"name":"A"},{"name":"B"},{"name":"C"}]})";
    EXPECT_EQ(SceneOf("{" + scenes), "A");
    EXPECT_EQ(SceneOf("{\"scene\":2," + scenes), "C");
    EXPECT_EQ(SceneOf("{" + scenes, {.scene = "Town"}), "C");
    EXPECT_EQ(SceneOf("{" + scenes, {.scene = "1"}), "B");
    EXPECT_EQ(SceneOf("{" + scenes, {.scene = "0"}), "B");  // its name
    EXPECT_EQ(ProblemOf("{" + scenes, {.scene = "3"}), "scenes: there is no scene '3' among the 3 scenes");
    EXPECT_EQ(ProblemOf("{\"scene\":3," + scenes), "scene: 3 is not below 3");
    EXPECT_EQ(ProblemOf("{}", {.scene = "x"}), "the document: there is no scene 'x', the file has no scenes");
}

TEST(NodeTree, WithoutScenesAllRootsAreRead)
{
    EXPECT_EQ(SceneOf(R"({"nodes":[{"name":"A","children":[1]},{"name":"B"},{"name":"C"}]})"), "Root( A( B ) C )");
    EXPECT_EQ(SceneOf("{}"), "Root");
}

TEST(NodeTree, FurtherScenesAreALoss)
{
    const Model model = GltfDocument::Parse(R"({"scenes":[{"name":"First"},{},{}]})").Read();
    ASSERT_EQ(model.notes.All().size(), 1U);
    EXPECT_EQ(model.notes.All()[0].loss, "scenes");
    EXPECT_EQ(model.notes.All()[0].text, "dropped further scenes of the file; --scene chooses another one (2)");
    EXPECT_EQ(model.carried.scene.dump(), R"({"name":"First"})");
}

}  // namespace
