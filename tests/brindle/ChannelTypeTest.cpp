#include <brindle/ChannelType.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <new>

namespace
{

TEST(ChannelType, HasTheHostsLayout)
{
    EXPECT_EQ(sizeof(ChannelType), 136U);
    EXPECT_EQ(offsetof(ChannelType, name), 0U);
    EXPECT_EQ(offsetof(ChannelType, id), 80U);
    EXPECT_EQ(offsetof(ChannelType, secondId), 96U);
    EXPECT_EQ(offsetof(ChannelType, reserved), 112U);
    EXPECT_EQ(offsetof(ChannelType, flag), 120U);
    EXPECT_EQ(offsetof(ChannelType, trailing), 128U);
    EXPECT_EQ(sizeof(ChannelType::name), 80U);
    EXPECT_EQ(sizeof(ChannelType::id), 16U);
    EXPECT_EQ(sizeof(ChannelType::secondId), 16U);
    EXPECT_EQ(sizeof(ChannelType::reserved), 8U);
    EXPECT_EQ(sizeof(ChannelType::flag), 4U);
    EXPECT_EQ(sizeof(ChannelType::trailing), 4U);
}

TEST(ChannelType, ConstructorClearsEveryByte)
{
    alignas(ChannelType) std::array<unsigned char, sizeof(ChannelType)> memory;
    memory.fill(0xAB);
    auto* type = new (memory.data()) ChannelType;
    std::array<unsigned char, sizeof(ChannelType)> image;
    std::memcpy(image.data(), type, image.size());
    EXPECT_TRUE(std::all_of(image.begin(), image.end(), [](unsigned char byte) { return byte == 0; }));
}

}  // namespace
