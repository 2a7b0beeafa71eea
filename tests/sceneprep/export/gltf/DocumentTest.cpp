#include <sceneprep/export/gltf/Document.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Gltf;
using testing::ElementsAre;

TEST(GltfDocument, IsJsonWithoutEmptyLists)
{
    Document document;
    document.asset["version"] = "2.0";
    Append(document.nodes, Json::object());
    const Json read = Json::parse(TextOf(document, 0, ""));
    EXPECT_EQ(read, Json::parse(R"({"asset": {"version": "2.0"}, "nodes": [{}]})"));
}

TEST(GltfDocument, HasOneBufferIfThereAreBytes)
{
    EXPECT_EQ(Json::parse(TextOf(Document(), 8, ""))["buffers"], Json::parse(R"([{"byteLength": 8}])"));
    EXPECT_EQ(Json::parse(TextOf(Document(), 8, "a.bin"))["buffers"][0]["uri"], "a.bin");
}

TEST(GltfDocument, ListsTheExtensionsThatAnythingUses)
{
    Document document;
    Append(document.materials, Json::parse(R"({"extensions": {"A": {"b": {"extensions": {"B": {}}}}}})"));
    Append(document.nodes, Json::parse(R"({"extras": {"extensions": {"NOT": {}}}})"));
    document.extensions["C"] = Json::object();
    document.impliedExtensions.insert("D");
    Append(document.lights, Json::object());
    EXPECT_THAT(UsedExtensions(document), ElementsAre("A", "B", "C", "D", "KHR_lights_punctual"));
}

TEST(GltfDocument, RequiresOnlyExtensionsInUse)
{
    Document document;
    document.requiredExtensions = {"A", "B"};
    EXPECT_FALSE(Json::parse(TextOf(document, 0, "")).contains("extensionsRequired"));
    document.extensions["B"] = Json::object();
    EXPECT_EQ(Json::parse(TextOf(document, 0, ""))["extensionsRequired"], Json::parse(R"(["B"])"));
}

TEST(GltfDocument, LightsAreInTheirExtension)
{
    Document document;
    Append(document.lights, {{"type", "point"}});
    const Json read = Json::parse(TextOf(document, 0, ""));
    EXPECT_EQ(read["extensions"]["KHR_lights_punctual"]["lights"][0]["type"], "point");
}

TEST(GltfDocument, BytesThatAreNotUtf8AreReplaced)
{
    Document document;
    Append(document.nodes, {{"name", "M\xFChle"}});
    EXPECT_EQ(Json::parse(TextOf(document, 0, ""))["nodes"][0]["name"], "M\xEF\xBF\xBDhle");
}

}  // namespace
