#include <pictures/Font.h>

#include <cctype>

namespace Pictures
{
namespace
{

constexpr int kColumns = 5;
constexpr int kRows = 7;
constexpr int kAdvance = kColumns + 1;

struct Glyph
{
    char sign;
    const char* dots;  ///< row by row, a blank between rows
};

// clang-format off
constexpr Glyph kGlyphs[] = {
    {'A', ".###. #...# #...# ##### #...# #...# #...#"},
    {'B', "####. #...# #...# ####. #...# #...# ####."},
    {'C', ".###. #...# #.... #.... #.... #...# .###."},
    {'D', "####. #...# #...# #...# #...# #...# ####."},
    {'E', "##### #.... #.... ####. #.... #.... #####"},
    {'F', "##### #.... #.... ####. #.... #.... #...."},
    {'G', ".###. #...# #.... #.### #...# #...# .###."},
    {'H', "#...# #...# #...# ##### #...# #...# #...#"},
    {'I', ".###. ..#.. ..#.. ..#.. ..#.. ..#.. .###."},
    {'J', "..### ...#. ...#. ...#. ...#. #..#. .##.."},
    {'K', "#...# #..#. #.#.. ##... #.#.. #..#. #...#"},
    {'L', "#.... #.... #.... #.... #.... #.... #####"},
    {'M', "#...# ##.## #.#.# #.#.# #...# #...# #...#"},
    {'N', "#...# ##..# #.#.# #.#.# #..## #...# #...#"},
    {'O', ".###. #...# #...# #...# #...# #...# .###."},
    {'P', "####. #...# #...# ####. #.... #.... #...."},
    {'Q', ".###. #...# #...# #...# #.#.# #..#. .##.#"},
    {'R', "####. #...# #...# ####. #.#.. #..#. #...#"},
    {'S', ".#### #.... #.... .###. ....# ....# ####."},
    {'T', "##### ..#.. ..#.. ..#.. ..#.. ..#.. ..#.."},
    {'U', "#...# #...# #...# #...# #...# #...# .###."},
    {'V', "#...# #...# #...# #...# .#.#. .#.#. ..#.."},
    {'W', "#...# #...# #...# #.#.# #.#.# ##.## #...#"},
    {'X', "#...# .#.#. .#.#. ..#.. .#.#. .#.#. #...#"},
    {'Y', "#...# #...# .#.#. ..#.. ..#.. ..#.. ..#.."},
    {'Z', "##### ....# ...#. ..#.. .#... #.... #####"},
    {'0', ".###. #...# #..## #.#.# ##..# #...# .###."},
    {'1', "..#.. .##.. ..#.. ..#.. ..#.. ..#.. .###."},
    {'2', ".###. #...# ....# ...#. ..#.. .#... #####"},
    {'3', ".###. #...# ....# ..##. ....# #...# .###."},
    {'4', "...#. ..##. .#.#. #..#. ##### ...#. ...#."},
    {'5', "##### #.... ####. ....# ....# #...# .###."},
    {'6', ".###. #.... #.... ####. #...# #...# .###."},
    {'7', "##### ....# ...#. ...#. ..#.. ..#.. ..#.."},
    {'8', ".###. #...# #...# .###. #...# #...# .###."},
    {'9', ".###. #...# #...# .#### ....# ....# .###."},
    {'.', "..... ..... ..... ..... ..... .##.. .##.."},
    {',', "..... ..... ..... ..... .##.. ..#.. .#..."},
    {':', "..... .##.. .##.. ..... .##.. .##.. ....."},
    {'-', "..... ..... ..... .###. ..... ..... ....."},
};
// clang-format on

const Glyph* FindGlyph(char sign)
{
    for (const Glyph& glyph : kGlyphs)
    {
        if (glyph.sign == sign)
            return &glyph;
    }
    return nullptr;
}

void FillSquare(Image& image, int left, int top, int size, const Color& color)
{
    for (int y = top; y < top + size; ++y)
    {
        for (int x = left; x < left + size; ++x)
        {
            if (x >= 0 && y >= 0 && x < image.Width() && y < image.Height())
                image.At(x, y) = color;
        }
    }
}

void DrawGlyph(Image& image, int x, int y, const Glyph& glyph, int scale, const Color& color)
{
    for (int row = 0; row < kRows; ++row)
    {
        for (int column = 0; column < kColumns; ++column)
        {
            if (glyph.dots[row * (kColumns + 1) + column] == '#')
                FillSquare(image, x + column * scale, y + row * scale, scale, color);
        }
    }
}

}  // namespace

int TextWidth(std::string_view text, int scale)
{
    return text.empty() ? 0 : (static_cast<int>(text.size()) * kAdvance - 1) * scale;
}

void DrawText(Image& image, int x, int y, std::string_view text, int scale, const Color& color)
{
    for (const char sign : text)
    {
        const auto capital = static_cast<char>(std::toupper(static_cast<unsigned char>(sign)));
        if (const Glyph* glyph = FindGlyph(capital))
            DrawGlyph(image, x, y, *glyph, scale, color);
        x += kAdvance * scale;
    }
}

}  // namespace Pictures
