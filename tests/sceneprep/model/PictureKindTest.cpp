#include <sceneprep/model/PictureKind.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::KindOf;

TEST(PictureKind, IsToldByTheFirstBytes)
{
    ASSERT_NE(KindOf({0x89, 'P', 'N', 'G', 13}), nullptr);
    EXPECT_STREQ(KindOf({0x89, 'P', 'N', 'G', 13})->mimeType, "image/png");
    ASSERT_NE(KindOf({0xFF, 0xD8, 0xFF, 0xE0}), nullptr);
    EXPECT_STREQ(KindOf({0xFF, 0xD8, 0xFF, 0xE0})->extension, "jpg");
}

TEST(PictureKind, OthersHaveNone)
{
    EXPECT_EQ(KindOf({}), nullptr);
    EXPECT_EQ(KindOf({0x89, 'P', 'N', 'G'}), nullptr);  // nothing behind the mark
    EXPECT_EQ(KindOf({'B', 'M', 0, 0, 0, 0}), nullptr);
}

}  // namespace
