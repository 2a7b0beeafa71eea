#include <gtest/gtest.h>
#include <sceneprep/compare/CanonicalJson.h>

#include <string>

namespace
{

using Sceneprep::Json;

std::string TextOf(const std::string& json) { return Sceneprep::CanonicalText(Json::parse(json)); }

TEST(CanonicalJsonTest, TheOrderOfMembersAndTheSpellingOfNumbersDoNotMatter)
{
    EXPECT_EQ(TextOf(R"({"b":1,"a":[0.5,-0.0]})"), TextOf(R"({"a":[5e-1,0],"b":1.0})"));
    EXPECT_NE(TextOf(R"({"a":[1,2]})"), TextOf(R"({"a":[2,1]})"));
    EXPECT_NE(TextOf(R"({"a":1})"), TextOf(R"({"a":1.001})"));
    EXPECT_EQ(TextOf(R"({"a":0.1})"), TextOf(R"({"a":0.10000000149})"));
}

TEST(CanonicalJsonTest, NamesExtrasAndDefaultsDoNotMatter)
{
    EXPECT_EQ(TextOf(R"({"name":"Red","extras":{"a":1},"doubleSided":false,"alphaMode":"OPAQUE","alphaCutoff":0.5,
                         "emissiveFactor":[0,0,0],"pbrMetallicRoughness":{"metallicFactor":1,"roughnessFactor":1.0,
                         "baseColorFactor":[1,1,1,1]},"extensions":{}})"),
              "{}");
    EXPECT_NE(TextOf(R"({"doubleSided":true})"), "{}");
    EXPECT_NE(TextOf(R"({"alphaMode":"MASK"})"), "{}");
    EXPECT_NE(TextOf(R"({"pbrMetallicRoughness":{"metallicFactor":0}})"), "{}");
}

TEST(CanonicalJsonTest, AnEmptyExtensionMattersWhereItIsAMark)
{
    EXPECT_NE(TextOf(R"({"extensions":{"KHR_materials_unlit":{}}})"), "{}");
    EXPECT_EQ(TextOf(R"({"extensions":{"KHR_materials_clearcoat":{"clearcoatFactor":0}}})"), "{}");
}

}  // namespace
