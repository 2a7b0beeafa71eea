#include <sceneprep/model/ImageKind.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::ImageKindOf;

TEST(ImageKind, IsRecognizedByTheFirstBytes)
{
    ASSERT_NE(ImageKindOf({0x89, 'P', 'N', 'G', 13}), nullptr);
    EXPECT_STREQ(ImageKindOf({0x89, 'P', 'N', 'G', 13})->mimeType, "image/png");
    ASSERT_NE(ImageKindOf({0xFF, 0xD8, 0xFF, 0xE0}), nullptr);
    EXPECT_STREQ(ImageKindOf({0xFF, 0xD8, 0xFF, 0xE0})->extension, "jpg");
}

TEST(ImageKind, SomeKindsNeedAnExtensionOfGltf)
{
    const auto kindOf = [](const std::string& text) { return ImageKindOf({text.begin(), text.end()}); };
    EXPECT_STREQ(kindOf("RIFFsizeWEBPVP8 ")->textureExtension, "EXT_texture_webp");
    EXPECT_STREQ(kindOf("\xABKTX 20\xBB\r\n\x1A\n")->mimeType, "image/ktx2");
    EXPECT_STREQ(kindOf("DDS |")->textureExtension, "MSFT_texture_dds");
    EXPECT_STREQ(kindOf("sizeftypavif and more")->extension, "avif");
    EXPECT_EQ(kindOf("RIFFsizeWAVEfmt "), nullptr);
    EXPECT_EQ(ImageKindOf({0x89, 'P', 'N', 'G', 13})->textureExtension, nullptr);
}

TEST(ImageKind, OtherFilesHaveNone)
{
    EXPECT_EQ(ImageKindOf({}), nullptr);
    EXPECT_EQ(ImageKindOf({0x89, 'P', 'N', 'G'}), nullptr);  // nothing follows
    EXPECT_EQ(ImageKindOf({'B', 'M', 0, 0, 0, 0}), nullptr);
}

}  // namespace
