#include <importing/plugin/TextureName.h>

#include <gtest/gtest.h>

#include <string>

namespace
{

using Importing::NormalizeTextureName;

struct Case
{
    const char* name;
    const char* text;
    const char* expected;
};

class TextureName : public testing::TestWithParam<Case>
{};

TEST_P(TextureName, Normalizes) { EXPECT_EQ(NormalizeTextureName(GetParam().text), GetParam().expected); }

const Case kCases[] = {
    {"Empty", "", ""},
    {"NormalAlready", "wood.png", "wood.png"},
    {"Capitals", "Textures/WOOD.Png", "textures/wood.png"},
    {"LeadingAndTrailingBlanks", "  wood.png ", "wood.png"},
    {"TabsAndLineBreaks", "\t\r\nwood.png\v\r\n", "wood.png"},
    {"BlanksInsideStay", " old wood\t.png ", "old wood\t.png"},
    {"NothingButBlanks", " \t\v\r\n ", ""},
    {"FormFeedIsNotTrimmed", "\fwood.png\f", "\fwood.png\f"},
    {"BackslashesStay", "C:\\Wood.PNG", "c:\\wood.png"},
    {"BytesAbove127Stay", "H\xC3\x96LZ.png", "h\xC3\x96lz.png"},
};

INSTANTIATE_TEST_SUITE_P(, TextureName, testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TextureNames, ANormalizedNameStaysAsItIs)
{
    for (const Case& row : kCases)
        EXPECT_EQ(NormalizeTextureName(row.expected), row.expected);
}

TEST(TextureNames, ZeroBytesAreKept)
{
    EXPECT_EQ(NormalizeTextureName(std::string(" A\0B ", 5)), std::string("a\0b", 3));
}

}  // namespace
