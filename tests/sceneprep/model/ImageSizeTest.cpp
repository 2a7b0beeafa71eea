#include <sceneprep/model/ImageSize.h>

#include <gtest/gtest.h>
#include <sceneprep/model/EncodePng.h>

#include <string>

namespace
{

using namespace Sceneprep;

using Bytes = std::vector<unsigned char>;

Bytes BytesOf(const std::string& text) { return {text.begin(), text.end()}; }

std::string Zeros(std::size_t count) { return std::string(count, '\0'); }

/// The bytes of a string literal, which may have zeros.
template <std::size_t Size>
std::string Raw(const char (&text)[Size])
{
    return {text, Size - 1};
}

TEST(ImageSize, ReadsPng)
{
    const Bytes pixels(4 * 300 * 7);
    EXPECT_EQ(SizeOfImage(EncodePng(pixels.data(), 300, 7)), (ImageSize{300, 7}));
}

TEST(ImageSize, ReadsJpegAfterOtherSegments)
{
    const std::string frame = Raw("\x00\x11\x08\x01\x02\x03\x04\x03");  // length, precision, height, width, components
    const std::string start = "\xFF\xD8";
    const std::string metadata = Raw("\xFF\xE1\x00\x06") + "\xFF\xC0..";  // looks like a frame inside
    const std::string table = Raw("\xFF\xC4\x00\x03.");
    for (const std::string marker : {"\xFF\xC0", "\xFF\xC2", "\xFF\xFF\xC1"})
        EXPECT_EQ(SizeOfImage(BytesOf(start + metadata + table + marker + frame)), (ImageSize{0x304, 0x102}));
    EXPECT_EQ(SizeOfImage(BytesOf(start + metadata + table + Raw("\xFF\xDA\x00\x04.."))), std::nullopt);
}

TEST(ImageSize, ReadsTheThreeKindsOfWebp)
{
    const std::string riff = "RIFF" + Raw("\x20\x00\x00\x00") + "WEBP";
    const std::string lossy = "VP8 " + Zeros(7) + "\x9D\x01\x2A" + Raw("\x02\xC1\x03\x40");
    EXPECT_EQ(SizeOfImage(BytesOf(riff + lossy)), (ImageSize{0x102, 3}));
    const std::uint32_t bits = (300U - 1) | (200U - 1) << 14U;
    std::string lossless = "VP8L" + Zeros(4) + "\x2F";
    for (unsigned i = 0; i < 4; ++i)
        lossless += static_cast<char>(bits >> (8 * i) & 0xFFU);
    EXPECT_EQ(SizeOfImage(BytesOf(riff + lossless)), (ImageSize{300, 200}));
    const std::string extended = "VP8X" + Zeros(8) + Raw("\xFF\x0F\x00\x0F\x27\x00");
    EXPECT_EQ(SizeOfImage(BytesOf(riff + extended)), (ImageSize{4096, 10000}));
}

TEST(ImageSize, ReadsKtx2AndDds)
{
    const std::string ktx = "\xABKTX 20\xBB\r\n\x1A\n" + Zeros(8) + Raw("\x00\x04\x00\x00\x80\x00\x00\x00");
    EXPECT_EQ(SizeOfImage(BytesOf(ktx)), (ImageSize{1024, 128}));
    const std::string dds = "DDS " + Zeros(8) + Raw("\x40\x00\x00\x00\x00\x02\x00\x00");
    EXPECT_EQ(SizeOfImage(BytesOf(dds)), (ImageSize{512, 64}));
}

TEST(ImageSize, IsUnknownForOtherAndTruncatedFiles)
{
    EXPECT_EQ(SizeOfImage({}), std::nullopt);
    EXPECT_EQ(SizeOfImage(BytesOf("GIF89a............")), std::nullopt);
    const Bytes pixels(4);
    const Bytes png = EncodePng(pixels.data(), 1, 1);
    for (std::size_t size = 0; size < 24; ++size)
        EXPECT_EQ(SizeOfImage({png.begin(), png.begin() + static_cast<std::ptrdiff_t>(size)}), std::nullopt) << size;
}

}  // namespace
