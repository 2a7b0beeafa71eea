#include <sceneprep/import/gltf/ParseJson.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/Field.h>

#include <sceneprep/import/gltf/GltfDocument.h>
#include <random>
#include <utility>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::GltfImport;
using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(ParseJson, GivesTheSameDocumentAsTheLibrarysOwnParser)
{
    const std::string text =
        R"({"z":1,"a":[true,null,-2,18446744073709551615,0.5,"x\u00e4",[],{}],"b":{"c":{"d":[[1],[2]]}}})";
    EXPECT_EQ(ParseJson(text).dump(), Json::parse(text).dump());
    EXPECT_EQ(ParseJson("7").dump(), "7");
}

TEST(ParseJson, NamesLineAndColumnOfAProblem)
{
    EXPECT_THAT([] { ParseJson("{\n\"a\": }"); },
                ThrowsMessage<FormatError>(HasSubstr("the text is not JSON: parse error at line 2, column 6")));
    EXPECT_THAT([] { ParseJson("{\"a\":1]"); }, ThrowsMessage<FormatError>(HasSubstr("line 1, column 7")));
}

TEST(ParseJson, ReportsTextsThatEndEarlyAsTruncated)
{
    const std::string text = R"({"a": [1, "two", true], "b": {"c": "x\ny"}})";
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_THAT([&] { ParseJson(text.substr(0, length)); },
                    ThrowsMessage<FormatError>("the file is truncated: its JSON text ends before it is complete"))
            << length;
}

TEST(ParseJson, RefusesAKeyThatOccursTwice)
{
    EXPECT_THAT([] { ParseJson(R"({"a":1,"b":2,"a":3})"); },
                ThrowsMessage<FormatError>("an object has the key 'a' twice"));
    std::string text = "{\"k0\":0";
    for (int i = 0; i < 40; ++i)
        text += ",\"k" + std::to_string(i % 39 + 1) + "\":0";
    EXPECT_THAT([&] { ParseJson(text + "}"); }, ThrowsMessage<FormatError>("an object has the key 'k1' twice"));
}

TEST(ParseJson, ReadsObjectsWithManyKeysInLinearTime)
{
    std::string text = "{\"k\":0";
    constexpr int kKeys = 200000;
    for (int i = 0; i < kKeys; ++i)
        text += ",\"k" + std::to_string(i) + "\":0";
    EXPECT_EQ(ParseJson(text + "}").size(), kKeys + 1U);
}

TEST(ParseJson, RefusesDeepNesting)
{
    const std::string deep(100000, '[');
    EXPECT_THAT([&] { ParseJson(deep); }, ThrowsMessage<FormatError>("the text is nested more than 500 deep"));
    EXPECT_EQ(ParseJson(std::string(500, '[') + std::string(500, ']')).size(), 1U);
}

/// Returns what both parsers make of a text: its values again, or "refused".
std::pair<std::string, std::string> BothResults(const std::string& text)
{
    std::string own = "refused";
    try
    {
        own = ParseJson(text).dump();
    }
    catch (const FormatError&)
    {}
    const Json expected = Json::parse(text, nullptr, false);
    return {own, expected.is_discarded() ? "refused" : expected.dump()};
}

TEST(ParseJson, AgreesWithTheLibraryOnNumbersAndStrings)
{
    for (const char* text : {"0",
                             "-0",
                             "-0.0",
                             "1",
                             "-1",
                             "01",
                             "1.",
                             ".5",
                             "1.5",
                             "1e5",
                             "1E+5",
                             "1e-5",
                             "1e",
                             "1e+",
                             "-",
                             "+1",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "4.9e-324",
                             "9223372036854775807",
                             "-9223372036854775808",
                             "-9223372036854775809",
                             "18446744073709551615",
                             "18446744073709551616",
                             "123456789012345678901234567890",
                             "0x10",
                             "1 2",
                             "nul",
                             "true",
                             "truex",
                             "NaN",
                             "[1,]",
                             "[,1]",
                             "{\"a\":1,}",
                             "{\"a\" 1}",
                             "{a:1}",
                             "[1 2]",
                             "]",
                             "\"",
                             "\"\\\"",
                             "\"a\\",
                             "\"\\u00e4\\n\\/\"",
                             "\"\\ud83d\\ude00\"",
                             "\"\\ud83d\"",
                             "\"\\x\"",
                             "\"\xC3\xA4\"",
                             "\"\xC3\"",
                             "\"\xFF\"",
                             "\"tab\there\"",
                             "\"\x7F\"",
                             "\xEF\xBB\xBF[1]",
                             "\xEF\xBB",
                             " \t\r\n1 ",
                             "[1]x",
                             "/**/1"})
    {
        const auto [own, expected] = BothResults(text);
        EXPECT_EQ(own, expected) << text;
    }
    EXPECT_EQ(BothResults(std::string("1\0", 2)).first, "refused");
    EXPECT_EQ(BothResults(std::string("[1\0]", 4)).first, "refused");
}

TEST(ParseJson, AgreesWithTheLibraryOnDamagedTexts)
{
    const std::string whole =
        R"({"a":[1,-2.5e3,true,null,"x\u00e4"],"b":{"c":[],"d":{}},"e":"text","f":[[0.1,2],[3]]})";
    const std::string characters = "{}[]\",:.-+eE0123456789 \\tfn\n\x01\xC3";
    std::mt19937 random(3);
    std::size_t accepted = 0;
    for (int i = 0; i < 20000; ++i)
    {
        std::string text = whole;
        for (std::size_t changes = random() % 3 + 1; changes > 0; --changes)
            text[random() % text.size()] = characters[random() % characters.size()];
        const auto [own, expected] = BothResults(text);
        // Keys that occur twice are refused by one of them alone.
        if (own == "refused" && expected != "refused")
            EXPECT_THAT([&] { ParseJson(text); }, ThrowsMessage<FormatError>(HasSubstr("twice"))) << text;
        else
            EXPECT_EQ(own, expected) << text;
        accepted += own == "refused" ? 0 : 1;
    }
    EXPECT_GT(accepted, 1000U);
}

}  // namespace
