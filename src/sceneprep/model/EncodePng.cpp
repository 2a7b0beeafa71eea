#include <sceneprep/model/EncodePng.h>

#include <png.h>

namespace Sceneprep
{

std::vector<unsigned char> EncodePng(const unsigned char* pixels, std::uint32_t width, std::uint32_t height)
{
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    header.width = width;
    header.height = height;
    header.format = PNG_FORMAT_BGRA;
    png_alloc_size_t size = 0;
    if (png_image_write_get_memory_size(header, size, 0, pixels, 0, nullptr) == 0)
        return {};
    std::vector<unsigned char> file(size);
    if (png_image_write_to_memory(&header, file.data(), &size, 0, pixels, 0, nullptr) == 0)
        return {};
    return file;
}

}  // namespace Sceneprep
