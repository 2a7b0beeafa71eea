#include <importing/plugin/EntryPoints.h>

#include <brindle/Brindle.h>
#include <importing/plugin/SceneContainer.h>
#include <records/CountedAllocations.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace
{

using Importing::SceneContainer;

constexpr std::array<std::uint8_t, 16> kID = {0xFA, 0x27, 0xB2, 0x7B, 0x4B, 0xA2, 0xB7, 0x4B,
                                              0xB1, 0xB4, 0xDF, 0x66, 0x5D, 0x60, 0xCB, 0xE8};

TEST(GetType, FillsTheRecord)
{
    const ChannelType& type = *GetType();
    EXPECT_STREQ(type.name.data(), "SceneContainer");
    EXPECT_EQ(type.id, kID);
    EXPECT_EQ(type.flag, 1);
    EXPECT_EQ(type.trailing, 0);
}

TEST(GetType, BytesAfterTheNameAreZero)
{
    const ChannelType& type = *GetType();
    EXPECT_TRUE(std::all_of(type.name.begin() + std::strlen("SceneContainer"), type.name.end(),
                            [](char character) { return character == '\0'; }));
}

TEST(GetType, BothIdentifiersAreTheSame) { EXPECT_EQ(GetType()->id, GetType()->secondId); }

TEST(GetType, ReturnsTheSameRecordEveryTime) { EXPECT_EQ(GetType(), GetType()); }

TEST(GetType, FieldsAreAtTheOffsetsOfTheHost)
{
    std::array<unsigned char, sizeof(ChannelType)> image;
    std::memcpy(image.data(), GetType(), image.size());
    EXPECT_EQ(std::memcmp(image.data(), "SceneContainer", 15), 0);
    EXPECT_EQ(std::memcmp(image.data() + 80, kID.data(), 16), 0);
    EXPECT_EQ(std::memcmp(image.data() + 96, kID.data(), 16), 0);
    const std::array<unsigned char, 4> one = {1, 0, 0, 0};
    EXPECT_EQ(std::memcmp(image.data() + 120, one.data(), 4), 0);
    const std::array<unsigned char, 4> zero = {};
    EXPECT_EQ(std::memcmp(image.data() + 128, zero.data(), 4), 0);
}

TEST(GetType, WritesItsFieldsAndKeepsThoseOfTheHost)
{
    ChannelType& type = *GetType();
    type.name.fill('x');
    type.id.fill(1);
    type.secondId.fill(2);
    type.reserved = 77;
    type.flag = 9;
    type.trailing = 9;
    EXPECT_EQ(GetType(), &type);
    EXPECT_STREQ(type.name.data(), "SceneContainer");
    EXPECT_EQ(type.name.back(), '\0');
    EXPECT_EQ(type.id, kID);
    EXPECT_EQ(type.secondId, kID);
    EXPECT_EQ(type.reserved, 77U);
    EXPECT_EQ(type.flag, 1);
    EXPECT_EQ(type.trailing, 0);
    type.reserved = 0;
}

TEST(InitDLL, CreatesANewEmptySceneAtEveryCall)
{
    const std::unique_ptr<Vyk_Channel> first(InitDLL());
    const std::unique_ptr<Vyk_Channel> second(InitDLL());
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_STREQ(first->GetChannelName(), "SceneContainer");
    auto* scene = dynamic_cast<SceneContainer*>(first.get());
    ASSERT_NE(scene, nullptr);
    EXPECT_EQ(scene->GetStatus(), -1);
    EXPECT_EQ(scene->GetName(), "");
    EXPECT_EQ(scene->GetRootNodeIndex(), -1);
    EXPECT_TRUE(scene->NodeLibrary.empty());
}

#if !defined(_WIN32)  // On Windows the library does not use the operator new of the program.

TEST(InitDLL, SceneIsDestroyedThroughItsBaseClass)
{
    const std::size_t before = Support::CountedAllocations::InUse();
    Vyk_Channel* channel = InitDLL();
    auto& scene = static_cast<SceneContainer&>(*channel);
    scene.NodeLibrary.resize(10);
    scene.CreateNewGeometryInLibrary();
    EXPECT_GT(Support::CountedAllocations::InUse(), before);
    delete channel;
    EXPECT_EQ(Support::CountedAllocations::InUse(), before);
}

TEST(InitDLL, ReturnsNullWithoutMemory)
{
    const std::size_t before = Support::CountedAllocations::InUse();
    Support::CountedAllocations::FailAfter(0);
    Vyk_Channel* channel = InitDLL();
    Support::CountedAllocations::Recover();
    EXPECT_EQ(channel, nullptr);
    EXPECT_EQ(Support::CountedAllocations::InUse(), before);
}

#endif

}  // namespace
