#include <sceneprep/export/gltf/Utf8.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::Gltf::ToUtf8;

const std::string kUnknown = "\xEF\xBF\xBD";

TEST(GltfUtf8, WellFormedTextStays)
{
    for (const std::string text : {"", "Box", "M\xC3\xBChle", "\xE2\x82\xAC", "\xF0\x9F\x8F\xA0", "a\r\nb"})
        EXPECT_EQ(ToUtf8(text), text);
}

TEST(GltfUtf8, BytesOfOtherEncodingsAreReplaced) { EXPECT_EQ(ToUtf8("M\xFChle"), "M" + kUnknown + "hle"); }

TEST(GltfUtf8, CutCharactersAreReplaced)
{
    EXPECT_EQ(ToUtf8("a\xE2\x82"), "a" + kUnknown + kUnknown);
    EXPECT_EQ(ToUtf8("\x82"), kUnknown);
}

TEST(GltfUtf8, OverlongFormsSurrogatesAndWhatIsBeyondTheLastCharacterAreReplaced)
{
    EXPECT_EQ(ToUtf8("\xC0\x80"), kUnknown + kUnknown);
    EXPECT_EQ(ToUtf8("\xED\xA0\x80"), kUnknown + kUnknown + kUnknown);
    EXPECT_EQ(ToUtf8("\xF4\x90\x80\x80"), kUnknown + kUnknown + kUnknown + kUnknown);
    EXPECT_EQ(ToUtf8("\xE0\x80\x80"), kUnknown + kUnknown + kUnknown);
}

}  // namespace
