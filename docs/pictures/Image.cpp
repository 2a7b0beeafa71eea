#include <pictures/Image.h>

namespace Pictures
{

Image::Image(int width, int height, const Color& background)
    : width_(width), height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), background)
{}

void Image::Place(const Image& other, int x, int y)
{
    for (int row = 0; row < other.height_; ++row)
        for (int column = 0; column < other.width_; ++column)
            At(x + column, y + row) = other.At(column, row);
}

Image Image::Reduced(int factor) const
{
    Image reduced(width_ / factor, height_ / factor, {});
    const float share = 1.0F / static_cast<float>(factor * factor);
    for (int y = 0; y < reduced.height_ * factor; ++y)
    {
        for (int x = 0; x < reduced.width_ * factor; ++x)
        {
            Color& pixel = reduced.At(x / factor, y / factor);
            pixel = pixel + At(x, y) * share;
        }
    }
    return reduced;
}

}  // namespace Pictures
