#include <brindle/Brindle.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

namespace
{

constexpr const char* kName = "a channel name longer than fifteen characters";

std::vector<unsigned char> Saved(const char* name)
{
    Vyk_Channel channel;
    channel.SetChannelName(name);
    VykFileSaver saver;
    EXPECT_TRUE(channel.SaveChannel(saver));
    return saver.GetBytes();
}

TEST(Vyk_Channel, StoresAName)
{
    Vyk_Channel channel;
    EXPECT_STREQ(channel.GetChannelName(), "");
    channel.SetChannelName(kName);
    EXPECT_STREQ(channel.GetChannelName(), kName);
    channel.SetChannelName(nullptr);
    EXPECT_STREQ(channel.GetChannelName(), "");
}

TEST(Vyk_Channel, CopiesHaveNameAndTimeStamp)
{
    Vyk_Channel channel;
    channel.SetChannelName(kName);
    channel.SetTimeStamp();
    Vyk_Channel copy(channel);
    Vyk_Channel assigned;
    assigned = channel;
    for (Vyk_Channel* other : {&copy, &assigned})
    {
        EXPECT_STREQ(other->GetChannelName(), kName);
        EXPECT_EQ(other->GetTimeStamp(), channel.GetTimeStamp());
    }
}

TEST(Vyk_Channel, TimeStampsIncreaseFromZero)
{
    Vyk_Channel first;
    Vyk_Channel second;
    EXPECT_EQ(first.GetTimeStamp(), 0U);
    first.SetTimeStamp();
    second.SetTimeStamp();
    EXPECT_GT(first.GetTimeStamp(), 0U);
    EXPECT_GT(second.GetTimeStamp(), first.GetTimeStamp());
    const std::uint32_t before = second.GetTimeStamp();
    first.SetTimeStamp();
    EXPECT_GT(first.GetTimeStamp(), before);
}

TEST(Vyk_Channel, SavedNameIsLoaded)
{
    for (const char* name : {"", "x", kName})
    {
        Vyk_Channel channel;
        channel.SetChannelName("old");
        VykFileLoader loader(Saved(name));
        EXPECT_TRUE(channel.LoadChannel(loader, nullptr));
        EXPECT_STREQ(channel.GetChannelName(), name);
    }
}

TEST(Vyk_Channel, SavedFormIsALengthAndTheCharacters)
{
    EXPECT_EQ(Saved("abc"), (std::vector<unsigned char>{3, 0, 0, 0, 'a', 'b', 'c'}));
}

TEST(Vyk_Channel, ChannelsAreLoadedOneAfterAnother)
{
    std::vector<unsigned char> bytes = Saved("first");
    const std::vector<unsigned char> second = Saved("second");
    bytes.insert(bytes.end(), second.begin(), second.end());
    VykFileLoader loader(bytes);
    Vyk_Channel channel;
    EXPECT_TRUE(channel.LoadChannel(loader, nullptr));
    EXPECT_STREQ(channel.GetChannelName(), "first");
    EXPECT_TRUE(channel.LoadChannel(loader, nullptr));
    EXPECT_STREQ(channel.GetChannelName(), "second");
}

TEST(Vyk_Channel, EveryTruncationIsRefusedAndChangesNothing)
{
    const std::vector<unsigned char> bytes = Saved(kName);
    for (std::size_t size = 0; size < bytes.size(); ++size)
    {
        Vyk_Channel channel;
        channel.SetChannelName("old");
        VykFileLoader loader(std::vector<unsigned char>(bytes.data(), bytes.data() + size));
        EXPECT_FALSE(channel.LoadChannel(loader, nullptr)) << size;
        EXPECT_STREQ(channel.GetChannelName(), "old") << size;
    }
}

TEST(Vyk_Channel, DamagedLengthIsRefused)
{
    VykFileLoader loader({0xFF, 0xFF, 0xFF, 0xFF, 'a', 'b', 'c'});
    Vyk_Channel channel;
    EXPECT_FALSE(channel.LoadChannel(loader, nullptr));
    EXPECT_STREQ(channel.GetChannelName(), "");
}

TEST(Vyk_Channel, TheOtherOperationsDoNothing)
{
    Vyk_Channel channel;
    channel.SetChannelName("name");
    VykFileSaver saver;
    char name[] = "count";
    channel.CallChannel();
    channel.OneTimeInitialize();
    channel.DoEvent(1, 2);
    channel.SetChannelInterfaceType(3);
    channel.DoDependencyInit(nullptr);
    channel.CheckIndexNrRemoval(4);
    channel.CheckPublicChannelInstanceRemoval(&channel, 5);
    channel.AddMetaData(saver);
    channel.SetChannelGroup(nullptr);
    channel.SetContextRenderCountName(name);
    EXPECT_EQ(channel.GetChannelFromChannel(&channel, nullptr), nullptr);
    EXPECT_EQ(channel.GetInternalChild(0), nullptr);
    EXPECT_EQ(channel.GetFeedbackClass(), nullptr);
    EXPECT_EQ(channel.GetContextRenderCountName(), nullptr);
    EXPECT_TRUE(saver.GetBytes().empty());
    EXPECT_STREQ(channel.GetChannelName(), "name");
    EXPECT_EQ(channel.GetTimeStamp(), 0U);
}

TEST(Vyk_Channel, TypeOfTheBaseClassIsARecordOfZeros)
{
    const ChannelType type = Vyk_Channel().GetChannelType();
    const ChannelType zeroed;
    EXPECT_EQ(std::memcmp(&type, &zeroed, sizeof(ChannelType)), 0);
}

TEST(Vyk_Channel, IsDestroyedThroughItsBaseClass) { EXPECT_TRUE(std::has_virtual_destructor_v<Vyk_Channel>); }

}  // namespace
