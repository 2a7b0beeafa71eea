#include <sceneprep/import/gltf/NodeAnimations.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>
#include <sceneprep/model/AnimationTime.h>
#include <support/SceneText.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using Importing::Key;

/// A node at (1, 2, 3) and two clips that move it.
GltfDocument TwoClips()
{
    GltfDocument document = GltfDocument::Parse(R"({"nodes":[{"name":"A","translation":[1,2,3]}]})");
    const int input = document.Accessor<float>({0.5F, 1}, "SCALAR", 1);
    const int once = document.Accessor<float>({0}, "SCALAR", 1);
    const int scales = document.Accessor<float>({1, 1, 1, 3, 1, 1}, "VEC3", 3);
    const int rotation = document.Accessor<std::int16_t>({0, 0, 0, 32767}, "VEC4", 4, {{"normalized", true}});
    document.json["animations"] = Json::parse(R"([{"samplers":[{},{}],"channels":[
        {"sampler":0,"target":{"node":0,"path":"scale"}},{"sampler":1,"target":{"node":0,"path":"rotation"}}]},
        {"samplers":[{}],"channels":[{"sampler":0,"target":{"node":0,"path":"translation"}}]}])");
    document.json["animations"][0]["samplers"] = {{{"input", input}, {"output", scales}},
                                                  {{"input", once}, {"output", rotation}}};
    document.json["animations"][1]["samplers"][0] = {{"input", input}, {"output", scales}};
    return document;
}

TEST(NodeAnimations, HaveTheKeysOfTheFirstClip)
{
    const Model model = TwoClips().Read();
    EXPECT_EQ(Support::ToText(*model.scene), "A*");
    ASSERT_EQ(model.scene->AnimationLibrary.size(), 1U);
    std::vector<Key> keys = model.scene->AnimationLibrary[0];
    ASSERT_EQ(keys.size(), 3U);
    EXPECT_EQ(keys[1].GetTime(), static_cast<std::uint32_t>(kTicksPerSecond / 2));
    EXPECT_EQ(keys[0].GetScale().x, 1);
    EXPECT_EQ(keys[2].GetScale().x, 3);
    EXPECT_EQ(keys[2].GetPosition().y, 2);
    EXPECT_EQ(keys[2].GetRotation().w, 1);
    EXPECT_EQ(model.carried.clips.size(), 2U);
}

TEST(NodeAnimations, NodesWithOtherChangesAreKept)
{
    GltfDocument document = TwoClips();
    document.json["nodes"] = Json::parse(R"([{"name":"A","children":[1,2,3]},{"name":"B"},
        {"name":"C","extensions":{"KHR_node_visibility":{"visible":false}}},
        {"name":"D","extensions":{"KHR_node_visibility":{"visible":true}}}])");
    document.json["animations"][1]["channels"][0]["target"] =
        Json::parse(R"({"path":"pointer","extensions":{"KHR_animation_pointer":{"pointer":"/nodes/1/extensions/x"}}})");
    const Model model = document.Read();
    EXPECT_EQ(Support::ToText(*model.scene), "A*( B C D )");
    EXPECT_THAT(model.supplement.keptNodes, testing::ElementsAre(false, true, true));
}

TEST(NodeAnimations, NodesWithWeightsAreKept)
{
    GltfDocument document = TwoClips();
    document.json["animations"][0]["channels"][0]["target"]["path"] = "weights";
    EXPECT_THAT(document.Read().supplement.keptNodes, testing::ElementsAre(true));
}

}  // namespace
