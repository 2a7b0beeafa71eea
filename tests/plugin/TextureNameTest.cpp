#include <importing/plugin/TextureName.h>

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <initializer_list>
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
    {"MultiByteCharactersStay", "H\xC3\x96LZ.png", "h\xC3\x96lz.png"},
};

INSTANTIATE_TEST_SUITE_P(, TextureName, testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TextureNames, ANormalizedNameDoesNotChange)
{
    for (const Case& row : kCases)
        EXPECT_EQ(NormalizeTextureName(row.expected), row.expected);
}

TEST(TextureNames, BytesAbove127AreKeptInTheCLocale)
{
    for (int byte = 128; byte < 256; ++byte)
    {
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(NormalizeTextureName(text), text) << byte;
    }
}

/// Sets the character type of the process to that of a locale, for the lifetime of the object.
class CharacterType
{
public:
    explicit CharacterType(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            isSet_ = isSet_ || std::setlocale(LC_CTYPE, name) != nullptr;
    }
    CharacterType(const CharacterType&) = delete;
    CharacterType& operator=(const CharacterType&) = delete;
    ~CharacterType() { std::setlocale(LC_CTYPE, "C"); }

    bool IsSet() const { return isSet_; }

private:
    bool isSet_ = false;
};

TEST(TextureNames, BytesAbove127AreLoweredInALocaleOfSingleByteCharacters)
{
    const CharacterType latin1{"en_US.iso88591", "de_DE.iso88591", "fr_FR.iso88591"};
    if (!latin1.IsSet())
        GTEST_SKIP() << "no ISO 8859-1 locale is installed";
    EXPECT_EQ(NormalizeTextureName("H\xD6LZ.PNG"), "h\xF6lz.png");
}

TEST(TextureNames, Byte255IsKeptInEveryLocale)
{
    const CharacterType russian{"ru_RU.koi8r"};
    if (!russian.IsSet())
        GTEST_SKIP() << "no KOI8-R locale is installed";
    EXPECT_EQ(std::tolower(0xFF), 0xDF);
    EXPECT_EQ(NormalizeTextureName("\xE0\xFF"), "\xC0\xFF");
}

TEST(TextureNames, ZeroBytesAreKept)
{
    EXPECT_EQ(NormalizeTextureName(std::string(" A\0B ", 5)), std::string("a\0b", 3));
}

}  // namespace
