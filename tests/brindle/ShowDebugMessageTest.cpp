#include <brindle/ShowDebugMessage.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace
{

using Messages = std::vector<std::pair<std::string, int>>;

class ShowDebugMessageTest : public testing::Test
{
protected:
    ~ShowDebugMessageTest() override { ShowDebugMessage.SetSink({}); }

    static DebugMessage::Sink SinkInto(Messages& messages)
    {
        return [&messages](const char* text, int value) { messages.emplace_back(text, value); };
    }
};

TEST_F(ShowDebugMessageTest, WithoutASinkMessagesAreDropped) { EXPECT_NO_THROW(ShowDebugMessage("lost", 1)); }

TEST_F(ShowDebugMessageTest, SinkGetsTextAndNumberInOrder)
{
    Messages messages;
    ShowDebugMessage.SetSink(SinkInto(messages));
    ShowDebugMessage("first", 1);
    ShowDebugMessage("second", -2);
    EXPECT_EQ(messages, (Messages{{"first", 1}, {"second", -2}}));
}

TEST_F(ShowDebugMessageTest, LaterSinkReplacesTheEarlierOne)
{
    Messages earlier;
    Messages later;
    ShowDebugMessage.SetSink(SinkInto(earlier));
    ShowDebugMessage.SetSink(SinkInto(later));
    ShowDebugMessage("message", 3);
    EXPECT_TRUE(earlier.empty());
    EXPECT_EQ(later, (Messages{{"message", 3}}));
}

TEST_F(ShowDebugMessageTest, EmptySinkDropsMessagesAgain)
{
    Messages messages;
    ShowDebugMessage.SetSink(SinkInto(messages));
    ShowDebugMessage.SetSink({});
    EXPECT_NO_THROW(ShowDebugMessage("lost", 4));
    EXPECT_TRUE(messages.empty());
}

}  // namespace
