#include <sceneprep/model/EncodePng.h>

#include <gtest/gtest.h>
#include <png.h>

#include <array>

namespace
{

using Sceneprep::EncodePng;

TEST(EncodePng, ThePixelsComeBack)
{
    const std::array<unsigned char, 24> pixels = {1,   2, 3, 255, 5, 6, 7, 128, 0, 0, 0, 255,
                                                  255, 0, 9, 1,   4, 4, 4, 4,   8, 9, 1, 255};
    const std::vector<unsigned char> file = EncodePng(pixels.data(), 3, 2);
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_memory(&header, file.data(), file.size()), 0);
    EXPECT_EQ(header.width, 3U);
    EXPECT_EQ(header.height, 2U);
    header.format = PNG_FORMAT_BGRA;
    std::array<unsigned char, 24> back = {};
    ASSERT_NE(png_image_finish_read(&header, nullptr, back.data(), 0, nullptr), 0);
    EXPECT_EQ(back, pixels);
}

TEST(EncodePng, AnEmptyImageIsRefused)
{
    const unsigned char pixel = 0;
    EXPECT_TRUE(EncodePng(&pixel, 0, 0).empty());
}

}  // namespace
