#include <sceneprep/export/gltf/Animations.h>

#include <gtest/gtest.h>
#include <sceneprep/export/gltf/ReadBack.h>

#include <limits>

namespace
{

using Importing::Key;
using namespace Sceneprep::Gltf;

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
    /// Reads the values of a channel of the only animation.
    template <typename T>
    std::vector<T> Output(std::size_t channel)
    {
        return written_.Read<T>(written_.document.animations.at(0)["samplers"][channel]["output"]);
    }

    SceneprepTests::WrittenDocument written_;
    AnimationWriter writer_{written_.buffers, written_.document};
};

TEST_F(GltfAnimations, KeysBecomeThreeChannelsOfANode)
{
    std::vector<Key> keys = {KeyAt(0, 1), KeyAt(2400, 2)};
    writer_.Add(keys, 5);
    writer_.Finish();
    ASSERT_EQ(written_.document.animations.size(), 1U);
    const Sceneprep::Json& animation = written_.document.animations[0];
    ASSERT_EQ(animation["channels"].size(), 3U);
    const char* paths[] = {"translation", "rotation", "scale"};
    for (std::size_t i = 0; i < 3; ++i)
    {
        EXPECT_EQ(animation["channels"][i]["target"]["node"], 5);
        EXPECT_EQ(animation["channels"][i]["target"]["path"], paths[i]);
        EXPECT_EQ(animation["samplers"][i]["interpolation"], "LINEAR");
    }
    EXPECT_EQ(written_.Read<float>(animation["samplers"][0]["input"]), (std::vector<float>{0, 0.5F}));
    EXPECT_EQ(Output<D3DXVECTOR3>(0)[1], D3DXVECTOR3(2, 0, 0));
    const D3DXQUATERNION rotation = Output<D3DXQUATERNION>(1)[0];
    EXPECT_FLOAT_EQ(rotation.z, 0.6F);
    EXPECT_FLOAT_EQ(rotation.w, 0.8F);
    EXPECT_EQ(Output<D3DXVECTOR3>(2)[0], D3DXVECTOR3(2, 2, 2));
}

TEST_F(GltfAnimations, TimesHaveTheirBounds)
{
    std::vector<Key> keys = {KeyAt(480, 0), KeyAt(4800, 0)};
    writer_.Add(keys, 0);
    EXPECT_FLOAT_EQ(written_.document.accessors[0]["min"][0].get<float>(), 0.1F);
    EXPECT_EQ(written_.document.accessors[0]["max"][0], 1);
}

TEST_F(GltfAnimations, KeysThatDoNotComeAfterTheOneBeforeAreDropped)
{
    std::vector<Key> keys = {KeyAt(10, 1), KeyAt(10, 2), KeyAt(5, 3), KeyAt(20, 4)};
    writer_.Add(keys, 0);
    writer_.Finish();
    const auto positions = Output<D3DXVECTOR3>(0);
    ASSERT_EQ(positions.size(), 2U);
    EXPECT_EQ(positions[0].x, 1);
    EXPECT_EQ(positions[1].x, 4);
}

TEST_F(GltfAnimations, ARotationOfLengthZeroIsTheIdentity)
{
    std::vector<Key> keys(1);
    keys[0].SetRotation({0, 0, 0, 0});
    writer_.Add(keys, 0);
    writer_.Finish();
    EXPECT_EQ(Output<D3DXQUATERNION>(1)[0].w, 1);
}

TEST_F(GltfAnimations, NanTranslationsAndScalesAreReplaced)
{
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    std::vector<Key> keys(1);
    keys[0].SetPosition({kNone, 2, 3});
    keys[0].SetScale({kNone, 2, 3});
    writer_.Add(keys, 0);
    writer_.Finish();
    EXPECT_EQ(Output<D3DXVECTOR3>(0)[0], D3DXVECTOR3(0, 2, 3));
    EXPECT_EQ(Output<D3DXVECTOR3>(2)[0], D3DXVECTOR3(1, 2, 3));
}

TEST_F(GltfAnimations, WithoutKeysThereIsNoAnimation)
{
    std::vector<Key> none;
    writer_.Add(none, 0);
    writer_.Finish();
    EXPECT_TRUE(written_.document.animations.empty());
}

}  // namespace
