#include <gtest/gtest.h>
#include <sceneprep/compare/ClipKeys.h>
#include <sceneprep/import/gltf/GltfDocument.h>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;

/// A triangle whose node two channels move.
GltfDocument MovingTriangle(const std::vector<float>& positions, bool isSwapped)
{
    GltfDocument document;
    document.AddTriangle();
    const int times = document.Accessor<float>({0, 2.5F}, "SCALAR", 1, {{"min", {0}}, {"max", {2.5}}});
    const int moves = document.Accessor<float>(positions, "VEC3", 3);
    const int sizes = document.Accessor<float>({1, 1, 1, 2, 2, 2}, "VEC3", 3);
    Json channels = {{{"sampler", 0}, {"target", {{"node", 0}, {"path", "translation"}}}},
                     {{"sampler", 1}, {"target", {{"node", 0}, {"path", "scale"}}}}};
    if (isSwapped)
        std::swap(channels[0], channels[1]);
    document.json["animations"] = {
        {{"name", "Walk"},
         {"channels", channels},
         {"samplers", {{{"input", times}, {"output", moves}}, {{"input", times}, {"output", sizes}}}}}};
    return document;
}

TEST(ClipKeysTest, DescribesNameChannelsAndDuration)
{
    const std::vector<ClipKey> clips = ListClips(MovingTriangle({0, 0, 0, 1, 0, 0}, false).Read());
    ASSERT_EQ(clips.size(), 1U);
    EXPECT_EQ(clips[0].name, "Walk");
    EXPECT_EQ(clips[0].channels, 2U);
    EXPECT_EQ(clips[0].duration, 2.5);
}

TEST(ClipKeysTest, TheOrderOfChannelsDoesNotMatterButKeysDo)
{
    const std::string text = ListClips(MovingTriangle({0, 0, 0, 1, 0, 0}, false).Read())[0].text;
    EXPECT_EQ(ListClips(MovingTriangle({0, 0, 0, 1, 0, 0}, true).Read())[0].text, text);
    EXPECT_NE(ListClips(MovingTriangle({0, 0, 0, 2, 0, 0}, false).Read())[0].text, text);
}

}  // namespace
