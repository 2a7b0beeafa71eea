#include <sceneprep/export/gltf/Animations.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>

#include <limits>

namespace
{

using Importing::Key;
using namespace Sceneprep::Gltf;
using SceneprepTests::ReadArray;

Key KeyAt(std::uint32_t time, float x)
{
    Key key;
    key.SetTime(time);
    key.SetPosition({x, 0, 0});
    key.SetRotation({0, 0, 3, 4});
    key.SetScale({2, 2, 2});
    return key;
}

class GltfAnimations : public testing::Test
{
protected:
    tinygltf::Model model_;
    Buffers buffers_{model_};
    AnimationWriter writer_{buffers_, model_};
};

TEST_F(GltfAnimations, KeysBecomeThreeChannelsOfANode)
{
    std::vector<Key> keys = {KeyAt(0, 1), KeyAt(2400, 2)};
    writer_.Add(keys, 5);
    writer_.Finish();
    ASSERT_EQ(model_.animations.size(), 1U);
    const tinygltf::Animation& animation = model_.animations[0];
    ASSERT_EQ(animation.channels.size(), 3U);
    const char* paths[] = {"translation", "rotation", "scale"};
    for (std::size_t i = 0; i < 3; ++i)
    {
        EXPECT_EQ(animation.channels[i].target_node, 5);
        EXPECT_EQ(animation.channels[i].target_path, paths[i]);
        EXPECT_EQ(animation.samplers[i].interpolation, "LINEAR");
    }
    EXPECT_EQ(ReadArray<float>(model_, animation.samplers[0].input), (std::vector<float>{0, 0.5F}));
    EXPECT_EQ(ReadArray<D3DXVECTOR3>(model_, animation.samplers[0].output)[1], D3DXVECTOR3(2, 0, 0));
    const D3DXQUATERNION turn = ReadArray<D3DXQUATERNION>(model_, animation.samplers[1].output)[0];
    EXPECT_FLOAT_EQ(turn.z, 0.6F);
    EXPECT_FLOAT_EQ(turn.w, 0.8F);
    EXPECT_EQ(ReadArray<D3DXVECTOR3>(model_, animation.samplers[2].output)[0], D3DXVECTOR3(2, 2, 2));
}

TEST_F(GltfAnimations, TimesHaveTheirBounds)
{
    std::vector<Key> keys = {KeyAt(480, 0), KeyAt(4800, 0)};
    writer_.Add(keys, 0);
    EXPECT_FLOAT_EQ(static_cast<float>(model_.accessors[0].minValues.at(0)), 0.1F);
    EXPECT_EQ(model_.accessors[0].maxValues.at(0), 1);
}

TEST_F(GltfAnimations, KeysThatComeTooLateAreLeftOut)
{
    std::vector<Key> keys = {KeyAt(10, 1), KeyAt(10, 2), KeyAt(5, 3), KeyAt(20, 4)};
    writer_.Add(keys, 0);
    writer_.Finish();
    const auto positions = ReadArray<D3DXVECTOR3>(model_, model_.animations[0].samplers[0].output);
    ASSERT_EQ(positions.size(), 2U);
    EXPECT_EQ(positions[0].x, 1);
    EXPECT_EQ(positions[1].x, 4);
}

TEST_F(GltfAnimations, ARotationWithoutLengthIsNone)
{
    std::vector<Key> keys(1);
    keys[0].SetRotation({0, 0, 0, 0});
    writer_.Add(keys, 0);
    writer_.Finish();
    EXPECT_EQ(ReadArray<D3DXQUATERNION>(model_, model_.animations[0].samplers[1].output)[0].w, 1);
}

TEST_F(GltfAnimations, PlacesAndSizesThatAreNoNumbersAreNone)
{
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    std::vector<Key> keys(1);
    keys[0].SetPosition({kNone, 2, 3});
    keys[0].SetScale({kNone, 2, 3});
    writer_.Add(keys, 0);
    writer_.Finish();
    EXPECT_EQ(ReadArray<D3DXVECTOR3>(model_, model_.animations[0].samplers[0].output)[0], D3DXVECTOR3(0, 2, 3));
    EXPECT_EQ(ReadArray<D3DXVECTOR3>(model_, model_.animations[0].samplers[2].output)[0], D3DXVECTOR3(1, 2, 3));
}

TEST_F(GltfAnimations, NothingMovesWithoutKeys)
{
    std::vector<Key> none;
    writer_.Add(none, 0);
    writer_.Finish();
    EXPECT_TRUE(model_.animations.empty());
}

}  // namespace
