#include <sceneprep/model/JsonReferences.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;

int PlusTen(int index) { return index + 10; }

TEST(JsonReferences, RenumbersAnIntegerMember)
{
    Json object = {{"sampler", 1}, {"source", "text"}};
    RenumberMember(object, "sampler", PlusTen);
    RenumberMember(object, "source", PlusTen);
    RenumberMember(object, "none", PlusTen);
    EXPECT_EQ(object, Json({{"sampler", 11}, {"source", "text"}}));
}

TEST(JsonReferences, RenumbersTexturesAtAnyDepth)
{
    Json material = Json::parse(R"({"normalTexture":{"index":1,"scale":2},"index":3,
        "extensions":{"A":{"texture":{"index":2}},"B":[{"glossTexture":{"index":0,"texCoord":1}}],"C":{"texture":5}}})");
    RenumberTextures(material, PlusTen);
    EXPECT_EQ(material, Json::parse(R"({"normalTexture":{"index":11,"scale":2},"index":3,
        "extensions":{"A":{"texture":{"index":12}},"B":[{"glossTexture":{"index":10,"texCoord":1}}],"C":{"texture":5}}})"));
}

TEST(JsonReferences, RemovesReferencesToDroppedTextures)
{
    Json material = Json::parse(R"({"aTexture":{"index":1},"b":{"texture":{"index":2},"c":3},"dTexture":{"index":2}})");
    RenumberTextures(material, [](int index) { return index == 2 ? -1 : index; });
    EXPECT_EQ(material, Json::parse(R"({"aTexture":{"index":1},"b":{"c":3}})"));
}

TEST(JsonReferences, DoesNotRenumberExtras)
{
    Json material =
        Json::parse(R"({"extras":{"aTexture":{"index":1}},"extensions":{"A":{"extras":{"texture":{"index":1}}}}})");
    const Json before = material;
    RenumberTextures(material, PlusTen);
    EXPECT_EQ(material, before);
}

TEST(JsonReferences, RenumbersTexturesInDeepValues)
{
    Json value = {{"texture", {{"index", 1}}}};
    for (int depth = 0; depth < 100'000; ++depth)
    {
        Json outer = Json::array();
        outer.push_back(std::move(value));
        value = std::move(outer);
    }
    RenumberTextures(value, PlusTen);
    const Json* inner = &value;
    while (inner->is_array())
        inner = &inner->front();
    EXPECT_EQ(inner->at("texture").at("index"), 11);
}

TEST(JsonReferences, RenumbersVariantsAndTheirMaterials)
{
    Json primitive = Json::parse(
        R"({"extensions":{"KHR_materials_variants":{"mappings":[{"material":1,"variants":[0,2]},{"material":0}]}}})");
    RenumberVariants(primitive, PlusTen, [](int variant) { return variant + 100; });
    EXPECT_EQ(primitive["extensions"]["KHR_materials_variants"]["mappings"],
              Json::parse(R"([{"material":11,"variants":[100,102]},{"material":10}])"));
}

TEST(JsonReferences, LeavesPrimitivesWithoutVariantsUnchanged)
{
    Json primitive = {{"extras", 1}};
    RenumberVariants(primitive, PlusTen, PlusTen);
    EXPECT_EQ(primitive, Json({{"extras", 1}}));
}

TEST(JsonReferences, RenumbersPointers)
{
    const auto renumber = [](const std::string& list, int index) { return list == "lights" ? index + 5 : index + 10; };
    EXPECT_EQ(RenumberPointer("/materials/3/pbrMetallicRoughness/baseColorFactor", renumber),
              "/materials/13/pbrMetallicRoughness/baseColorFactor");
    EXPECT_EQ(RenumberPointer("/extensions/KHR_lights_punctual/lights/1/intensity", renumber),
              "/extensions/KHR_lights_punctual/lights/6/intensity");
    EXPECT_EQ(RenumberPointer("/nodes/7", renumber), "/nodes/17");
    EXPECT_EQ(RenumberPointer("/scene/extras", renumber), "/scene/extras");
    EXPECT_EQ(RenumberPointer("", renumber), "");
}

}  // namespace
