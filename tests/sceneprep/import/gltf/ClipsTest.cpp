#include <sceneprep/import/gltf/Clips.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using namespace SceneprepTests;
using testing::ElementsAre;

/// A node and a clip that animates it.
GltfDocument Moving(const std::string& interpolation, std::size_t values)
{
    GltfDocument document = GltfDocument::Parse(R"({"nodes":[{"name":"A"}]})");
    const int input = document.Accessor<float>({0, 1}, "SCALAR", 1);
    const int output = document.Accessor<float>(std::vector<float>(3 * values, 0.5F), "VEC3", 3);
    document.json["animations"] = {
        {{"name", "Walk"},
         {"extras", 5},
         {"samplers", {{{"input", input}, {"output", output}, {"interpolation", interpolation}}}},
         {"channels", {{{"sampler", 0}, {"target", {{"node", 0}, {"path", "translation"}}}}}}}};
    return document;
}

TEST(Clips, AreCarriedAsTheyAre)
{
    GltfDocument document = Moving("CUBICSPLINE", 6);
    document.json["animations"][0]["channels"].push_back(
        {{"sampler", 0},
         {"target",
          {{"path", "pointer"}, {"extensions", {{"KHR_animation_pointer", {{"pointer", "/nodes/0/scale"}}}}}}}});
    const Model model = document.Read();
    ASSERT_EQ(model.carried.clips.size(), 1U);
    const CarriedClip& clip = model.carried.clips[0];
    EXPECT_EQ(clip.object.dump(), R"({"name":"Walk","extras":5})");
    ASSERT_EQ(clip.channels.size(), 2U);
    EXPECT_EQ(clip.channels[0].path, "translation");
    EXPECT_EQ(clip.channels[1].path, "pointer");
    EXPECT_EQ(clip.channels[1].pointer, "/nodes/0/scale");
    EXPECT_EQ(clip.channels[1].node, 0);
    EXPECT_EQ(clip.samplers.at(0).interpolation, "CUBICSPLINE");
    EXPECT_EQ(model.carried.accessors.at(static_cast<std::size_t>(clip.samplers[0].output)).count, 6U);
}

TEST(Clips, ShareAccessors)
{
    GltfDocument document = Moving("LINEAR", 2);
    document.json["animations"].push_back(document.json["animations"][0]);
    EXPECT_EQ(document.Read().carried.accessors.size(), 2U);
}

TEST(Clips, ChannelsWithoutATargetAreDropped)
{
    GltfDocument document = Moving("LINEAR", 2);
    document.json["animations"][0]["channels"][0]["target"].erase("node");
    EXPECT_TRUE(document.Read().carried.clips.at(0).channels.empty());
}

TEST(Clips, ThatAreNotValidAreRefused)
{
    EXPECT_EQ(Moving("LINEAR", 3).Problem(), "animations[0].samplers[0].output: 3 elements, 2 expected");
    EXPECT_EQ(Moving("CUBICSPLINE", 2).Problem(), "animations[0].samplers[0].output: 2 elements, 6 expected");
    EXPECT_EQ(Moving("SMOOTH", 2).Problem(),
              "animations[0].samplers[0].interpolation: 'SMOOTH' is not an interpolation");
    GltfDocument document = Moving("STEP", 2);
    Json& animation = document.json["animations"][0];
    animation["channels"][0]["target"]["path"] = "rotation";
    EXPECT_EQ(document.Problem(), "animations[0].samplers[0].output: 'VEC3' is not VEC4");
    animation["channels"][0]["target"]["path"] = "colour";
    EXPECT_EQ(document.Problem(),
              "animations[0].channels[0].target.path: 'colour' is not a property that can be animated");
    animation["channels"][0]["target"]["node"] = 1;
    EXPECT_EQ(document.Problem(), "animations[0].channels[0].target.node: 1 is not below 1");
    animation["channels"][0]["sampler"] = 2;
    EXPECT_EQ(document.Problem(), "animations[0].channels[0].sampler: 2 is not below 1");
    animation["samplers"][0]["input"] = 1;
    EXPECT_EQ(document.Problem(), "animations[0].samplers[0].input: the times are not single floats");
}

}  // namespace
