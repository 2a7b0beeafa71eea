#include <sceneprep/model/PictureKind.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::KindOf;

TEST(PictureKind, IsRecognizedByTheFirstBytes)
{
    ASSERT_NE(KindOf({0x89, 'P', 'N', 'G', 13}), nullptr);
    EXPECT_STREQ(KindOf({0x89, 'P', 'N', 'G', 13})->mimeType, "image/png");
    ASSERT_NE(KindOf({0xFF, 0xD8, 0xFF, 0xE0}), nullptr);
    EXPECT_STREQ(KindOf({0xFF, 0xD8, 0xFF, 0xE0})->extension, "jpg");
}

TEST(PictureKind, SomeKindsNeedAnExtensionOfGltf)
{
    const auto kindOf = [](const std::string& text) { return KindOf({text.begin(), text.end()}); };
    EXPECT_STREQ(kindOf("RIFFsizeWEBPVP8 ")->textureExtension, "EXT_texture_webp");
    EXPECT_STREQ(kindOf("\xABKTX 20\xBB\r\n\x1A\n")->mimeType, "image/ktx2");
    EXPECT_STREQ(kindOf("DDS |")->textureExtension, "MSFT_texture_dds");
    EXPECT_STREQ(kindOf("sizeftypavif and more")->extension, "avif");
    EXPECT_EQ(kindOf("RIFFsizeWAVEfmt "), nullptr);
    EXPECT_EQ(KindOf({0x89, 'P', 'N', 'G', 13})->textureExtension, nullptr);
}

TEST(PictureKind, OtherFilesHaveNone)
{
    EXPECT_EQ(KindOf({}), nullptr);
    EXPECT_EQ(KindOf({0x89, 'P', 'N', 'G'}), nullptr);  // nothing follows
    EXPECT_EQ(KindOf({'B', 'M', 0, 0, 0, 0}), nullptr);
}

}  // namespace
