#include <sceneprep/import/gltf/Nodes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;

TEST(Nodes, AreInTheOrderOfTheHierarchy)
{
    const Model model =
        GltfDocument::Parse(R"({"scenes":[{"nodes":[3]}],"nodes":[{"name":"C"},{"name":"B","children":[0]},
        {"name":"D"},{"name":"A","children":[1,2],"translation":[1,2,3],"extras":"text"}]})")
            .Read();
    EXPECT_EQ(Support::ToText(*model.scene), "A( B( C ) D )");
    EXPECT_THAT(model.supplement.nodeKeys, ElementsAre(3, 1, 0, 2));
    EXPECT_FALSE(model.carried.hasMadeRoot);
    ASSERT_EQ(model.carried.nodes.size(), 4U);
    EXPECT_EQ(model.carried.nodes[3].object.dump(), R"({"name":"A","translation":[1,2,3],"extras":"text"})");
    EXPECT_EQ(model.carried.nodes[3].local._42, 2);
    EXPECT_EQ(model.scene->NodeLibrary.at(0).GetLocalTransform().GetMatrix()._42, 2);
}

TEST(Nodes, SeveralRootsGetAParent)
{
    const Model model =
        GltfDocument::Parse(R"({"scenes":[{"nodes":[1,0]}],"nodes":[{"name":"A"},{"name":"B"}]})").Read();
    EXPECT_EQ(Support::ToText(*model.scene), "Root( B A )");
    EXPECT_TRUE(model.carried.hasMadeRoot);
    EXPECT_THAT(model.supplement.nodeKeys, ElementsAre(-1, 1, 0));
}

TEST(Nodes, OutsideOfTheSceneAreNotCarried)
{
    const Model model = GltfDocument::Parse(R"({"scenes":[{"nodes":[0]}],"nodes":[{"extras":1},{"extras":2}]})").Read();
    ASSERT_EQ(model.carried.nodes.size(), 2U);
    EXPECT_EQ(model.carried.nodes[0].object.dump(), R"({"extras":1})");
    EXPECT_TRUE(model.carried.nodes[1].object.empty());
}

TEST(Nodes, ShowCamerasAndLights)
{
    GltfDocument document = GltfDocument::Parse(R"({"scenes":[{"nodes":[0]}],
        "cameras":[{"type":"perspective","perspective":{"yfov":1,"znear":1},"extras":5}],
        "extensions":{"KHR_lights_punctual":{"lights":[{"type":"point","range":3}]},"OTHER":{}},
        "nodes":[{"name":"Top","children":[1,2]},
            {"name":"Eye","camera":0,"extensions":{"KHR_lights_punctual":{"light":0}}},{"name":"Eye","camera":0}]})");
    const Model model = document.Read();
    EXPECT_EQ(Support::ToText(*model.scene), "Top( Eye{_}<_> Eye{_} )");
    ASSERT_EQ(model.carried.cameraOf.size(), 2U);
    EXPECT_EQ(model.carried.cameraOf[1].object, 0);
    EXPECT_EQ(model.carried.cameraOf[1].nodeName, "Eye");
    EXPECT_TRUE(model.carried.cameraOf[1].isOwnNode);
    EXPECT_FALSE(model.carried.cameraOf[0].isOwnNode);
    EXPECT_EQ(model.carried.cameras.at(0)["extras"], 5);
    EXPECT_EQ(model.carried.lights.at(0)["range"], 3);
    EXPECT_EQ(model.carried.extensions.dump(), R"({"OTHER":{}})");
    EXPECT_EQ(model.carried.nodes.at(1).object.dump(), R"({"name":"Eye"})");
}

TEST(Nodes, MayBeVeryDeep)
{
    GltfDocument document;
    constexpr int kDepth = 100000;
    Json nodes = Json::array();
    for (int i = 0; i < kDepth; ++i)
        nodes.push_back({{"children", {i + 1}}});
    nodes.push_back(Json::object());
    document.json["nodes"] = std::move(nodes);
    EXPECT_EQ(document.Read().scene->NodeLibrary.size(), kDepth + 1U);
}

}  // namespace
