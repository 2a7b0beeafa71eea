#pragma once

#include <pictures/Image.h>

#include <string_view>

namespace Pictures
{

/// @return the width in pixels that DrawText() needs.
int TextWidth(std::string_view text, int scale);

/// Writes a line of capitals, digits and a few signs, 5 x 7 dots each; a dot is scale x scale pixels. Small letters
/// become capitals, unknown signs blanks. (x, y) is the upper left pixel; what falls outside the image is left out.
void DrawText(Image& image, int x, int y, std::string_view text, int scale, const Color& color);

}  // namespace Pictures
