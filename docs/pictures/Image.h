#pragma once

#include <pictures/Color.h>

#include <cstddef>
#include <vector>

namespace Pictures
{

/// A rectangle of pixels; (0, 0) is the upper left one.
class Image
{
public:
    Image(int width, int height, const Color& background);

    int Width() const { return width_; }
    int Height() const { return height_; }
    Color& At(int x, int y) { return pixels_[Position(x, y)]; }
    const Color& At(int x, int y) const { return pixels_[Position(x, y)]; }

    /// Copies another image to where its upper left pixel falls on (x, y); it has to fit.
    void Place(const Image& other, int x, int y);
    /// @return the image at 1 / factor of its size, every pixel the mean of factor x factor.
    Image Reduced(int factor) const;

private:
    std::size_t Position(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<Color> pixels_;
};

}  // namespace Pictures
