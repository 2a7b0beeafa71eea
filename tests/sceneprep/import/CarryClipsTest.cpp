#include <sceneprep/import/CarryClips.h>

#include <gtest/gtest.h>

#include <cstring>

namespace
{

using namespace Sceneprep;

std::vector<float> FloatsOf(const CarriedAccessor& accessor)
{
    std::vector<float> values(accessor.bytes.size() / sizeof(float));
    std::memcpy(values.data(), accessor.bytes.data(), accessor.bytes.size());
    return values;
}

/// A scene with one animation that has one channel for each node name.
class CarryClipsTest : public testing::Test
{
protected:
    aiNodeAnim& AddChannel(const char* node)
    {
        auto* channel = new aiNodeAnim;
        channel->mNodeName = node;
        animation_->mChannels[animation_->mNumChannels++] = channel;
        return *channel;
    }

    CarryClipsTest()
    {
        animation_ = new aiAnimation;
        animation_->mName = "Walk";
        animation_->mTicksPerSecond = 2;
        animation_->mChannels = new aiNodeAnim*[4]();
        scene_.mAnimations = new aiAnimation* [1] { animation_ };
        scene_.mNumAnimations = 1;
    }

    void AddPositions(aiNodeAnim& channel, std::initializer_list<aiVectorKey> keys)
    {
        channel.mPositionKeys = new aiVectorKey[keys.size()];
        std::copy(keys.begin(), keys.end(), channel.mPositionKeys);
        channel.mNumPositionKeys = static_cast<unsigned>(keys.size());
    }

    aiScene scene_;
    aiAnimation* animation_ = nullptr;
    Carried carried_;
};

TEST_F(CarryClipsTest, KeepsTheNameAndTheKeysInSeconds)
{
    AddPositions(AddChannel("Hand"), {{0, {1, 2, 3}}, {4, {4, 5, 6}}});
    EXPECT_EQ(CarryClips(scene_, {{"Hand", 7}}, carried_), 0U);
    ASSERT_EQ(carried_.clips.size(), 1U);
    const CarriedClip& clip = carried_.clips.front();
    EXPECT_EQ(clip.object, Json::parse(R"({"name": "Walk"})"));
    ASSERT_EQ(clip.channels.size(), 1U);
    EXPECT_EQ(clip.channels.front().node, 7);
    EXPECT_EQ(clip.channels.front().path, "translation");
    const CarriedSampler& sampler = clip.samplers.front();
    const CarriedAccessor& times = carried_.accessors[static_cast<std::size_t>(sampler.input)];
    EXPECT_EQ(FloatsOf(times), (std::vector<float>{0, 2}));
    EXPECT_EQ(times.max, Json::array({2.0F}));
    EXPECT_EQ(FloatsOf(carried_.accessors[static_cast<std::size_t>(sampler.output)]),
              (std::vector<float>{1, 2, 3, 4, 5, 6}));
}

TEST_F(CarryClipsTest, SkipsKeysWhoseTimeDoesNotGrow)
{
    AddPositions(AddChannel("Hand"), {{-2, {1, 0, 0}}, {0, {2, 0, 0}}, {2, {3, 0, 0}}, {1, {4, 0, 0}}});
    CarryClips(scene_, {{"Hand", 0}}, carried_);
    EXPECT_EQ(FloatsOf(carried_.accessors[0]), (std::vector<float>{0, 1}));
    EXPECT_EQ(FloatsOf(carried_.accessors[1]), (std::vector<float>{1, 0, 0, 3, 0, 0}));
}

TEST_F(CarryClipsTest, CountsChannelsOfUnknownNodesAndSkipsEmptyClips)
{
    AddPositions(AddChannel("Ghost"), {{0, {1, 2, 3}}});
    EXPECT_EQ(CarryClips(scene_, {{"Hand", 0}}, carried_), 1U);
    EXPECT_TRUE(carried_.clips.empty());
}

}  // namespace
