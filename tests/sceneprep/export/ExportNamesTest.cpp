#include <sceneprep/export/ExportNames.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;

std::string NameIn(const char* file, const std::string& name)
{
    const WriteFormat format = *FindWriteFormat(file);
    const std::string text = ExportName(name, format);
    EXPECT_EQ(ExportName(text, format), text);
    return text;
}

TEST(ExportNames, AreOnOneLine)
{
    EXPECT_EQ(NameIn("a.dae", "car body\r\nred paint"), "car body red paint");
    EXPECT_EQ(NameIn("a.dae", "\n"), "");
    EXPECT_EQ(NameIn("a.x", "a\x01 b\x7F"), "a b");
}

TEST(ExportNames, StayTheSameIfTheFormatAllowsThem)
{
    EXPECT_EQ(NameIn("a.dae", " a  \"b\" <&'\\> \xC3\xA4"), " a  \"b\" <&'\\> \xC3\xA4");
    EXPECT_EQ(NameIn("a.obj", " a  b "), "a b");
}

TEST(ExportNames, DoNotContainCharactersThatBreakTheFile)
{
    EXPECT_EQ(NameIn("a.fbx", "a \"'b'\""), "a _'b'_");
    EXPECT_EQ(NameIn("a.3mf", "a \"'b'\""), "a _'b'_");
    EXPECT_EQ(NameIn("a.x3d", "a \"'b'\""), "a \"_b_\"");
    EXPECT_EQ(NameIn("a.json", "a \"'b'\""), "a \"_b_\"");
    EXPECT_EQ(NameIn("a.obj", "a\\"), "a_");
}

TEST(ExportNames, AreCutBetweenCharacters)
{
    EXPECT_EQ(NameIn("a.dae", std::string(kLongestName, 'a')), std::string(kLongestName, 'a'));
    EXPECT_EQ(NameIn("a.dae", std::string(kLongestName + 1, 'a')), std::string(kLongestName, 'a'));
    const std::string plain(kLongestName - 1, 'a');
    EXPECT_EQ(NameIn("a.dae", plain + "\xC3\xA4"), plain);
}

}  // namespace
