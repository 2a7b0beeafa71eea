#include <sceneprep/import/gltf/ParseJson.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/GltfDocument.h>

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
    EXPECT_THAT([] { ParseJson(""); }, ThrowsMessage<FormatError>(HasSubstr("unexpected end of input")));
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

}  // namespace
