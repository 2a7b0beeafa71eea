#pragma once

#include <pictures/Image.h>

#include <string>

namespace Pictures
{

/// An image and the line of text below it.
struct Panel
{
    Image image;
    std::string caption;
};

/// Size of one of the two panels of a picture of a mesh operation.
inline constexpr int kPanelWidth = 398;
inline constexpr int kPanelHeight = 370;

/// @return both panels in one picture, the captions below them.
Image SideBySide(const Panel& left, const Panel& right);

}  // namespace Pictures
