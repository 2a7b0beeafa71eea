#include <pictures/Layout.h>

#include <pictures/Font.h>

#include <algorithm>

namespace Pictures
{
namespace
{

constexpr int kGap = 4;
constexpr int kCaptionHeight = 30;
constexpr int kTextScale = 2;

void PlacePanel(Image& picture, const Panel& panel, int x)
{
    picture.Place(panel.image, x, 0);
    const int indent = (panel.image.Width() - TextWidth(panel.caption, kTextScale)) / 2;
    DrawText(picture, x + indent, panel.image.Height() + 6, panel.caption, kTextScale, kInk);
}

}  // namespace

Image SideBySide(const Panel& left, const Panel& right)
{
    const int height = std::max(left.image.Height(), right.image.Height());
    Image picture(left.image.Width() + kGap + right.image.Width(), height + kCaptionHeight, kPaper);
    PlacePanel(picture, left, 0);
    PlacePanel(picture, right, left.image.Width() + kGap);

    const Color line = Mix(kPaper, kInk, 0.25F);
    for (int y = 12; y < height + kCaptionHeight - 12; ++y)
        picture.At(left.image.Width() + kGap / 2, y) = line;
    return picture;
}

}  // namespace Pictures
