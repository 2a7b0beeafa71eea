#include <pictures/Png.h>

#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace Pictures
{
namespace
{

std::uint8_t ToByte(float channel)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(channel, 0.0F, 1.0F) * 255.0F));
}

std::vector<std::uint8_t> ToBytes(const Image& image)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(image.Width()) * static_cast<std::size_t>(image.Height()) * 3);
    for (int y = 0; y < image.Height(); ++y)
    {
        for (int x = 0; x < image.Width(); ++x)
        {
            const Color& pixel = image.At(x, y);
            bytes.insert(bytes.end(), {ToByte(pixel.r), ToByte(pixel.g), ToByte(pixel.b)});
        }
    }
    return bytes;
}

}  // namespace

void WritePng(const Image& image, const std::filesystem::path& file)
{
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image.Width());
    header.height = static_cast<png_uint_32>(image.Height());
    header.format = PNG_FORMAT_RGB;

    const std::vector<std::uint8_t> bytes = ToBytes(image);
    if (png_image_write_to_file(&header, file.string().c_str(), 0, bytes.data(), 0, nullptr) == 0)
        throw std::runtime_error(file.string() + ": " + static_cast<const char*>(header.message));
}

}  // namespace Pictures
