#include <sceneprep/import/gltf/ReadGltf.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/import/gltf/GltfDocument.h>
#include <support/SceneText.h>

#include <random>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::EndsWith;
using testing::ThrowsMessage;

TEST(ReadGltf, ReadsATriangle)
{
    GltfDocument document;
    document.AddTriangle();
    const TemporaryFolder folder;
    std::vector<double> parts;
    Model model;
    ReadGltf(OpenGltf(folder.Write("town.gltf", document.Text())).value(), model, {},
             [&](double part) { parts.push_back(part); });
    EXPECT_EQ(model.scene->GetName(), "town");
    EXPECT_EQ(model.file, folder / "town.gltf");
    EXPECT_EQ(Support::ToText(*model.scene), "Node[Mesh]");
    EXPECT_EQ(model.scene->GeometryLibrary.at(0).IndexArray.size(), 3U);
    EXPECT_THAT(parts, testing::ElementsAre(1));
}

TEST(ReadGltf, NamesFileAndPathOfAProblem)
{
    const TemporaryFolder folder;
    const auto file = folder.Write("a.gltf", R"({"asset":{"version":"2.0"},"nodes":[{"mesh":3}]})");
    EXPECT_THAT([&] { GltfDocument::ReadFile(file); },
                ThrowsMessage<ToolError>("cannot read " + file.string() + ": nodes[0].mesh: 3 is not below 0"));
}

TEST(ReadGltf, ListsHaveToHoldObjects)
{
    EXPECT_EQ(GltfDocument::Parse(R"({"meshes":[7]})").Problem(), "meshes[0]: 7 is not an object");
    EXPECT_EQ(GltfDocument::Parse(R"({"materials":{}})").Problem(), "materials: an object is not an array");
    EXPECT_EQ(GltfDocument::Parse(R"({"nodes":[{"extensions":[]}]})").Problem(),
              "nodes[0].extensions: an array is not an object");
}

TEST(ReadGltf, ExtrasMayBeText)
{
    GltfDocument document;
    document.AddTriangle()["extras"] = "primitive";
    for (const char* list : {"nodes", "meshes", "scenes"})
        document.json[list][0]["extras"] = "text";
    document.json["asset"]["extras"] = "asset";
    const Model model = document.Read();
    EXPECT_EQ(model.carried.nodes.at(0).object["extras"], "text");
    EXPECT_EQ(model.carried.meshes.at(0)["extras"], "text");
    EXPECT_EQ(model.carried.scene["extras"], "text");
    EXPECT_EQ(model.carried.asset["extras"], "asset");
    EXPECT_EQ(model.carried.materialOf.at(0).primitive["extras"], "primitive");
}

TEST(ReadGltf, PositionsFarFromTheOriginAreExact)
{
    GltfDocument document;
    document.AddTriangle();
    document.Primitive()["attributes"]["POSITION"] =
        document.Accessor<float>({5600000.5F, 0, 0, 5600001.5F, 0, 0, 5600000.5F, 1, 0}, "VEC3", 3);
    const Model model = document.Read();
    EXPECT_EQ(model.scene->GeometryLibrary.at(0).VertexArray.at(0).GetPosition().x, 5600000.5F);
}

/// Replaces a value somewhere in a document by another one.
void Damage(Json& json, std::mt19937& random)
{
    Json* place = &json;
    while (place->is_structured() && !place->empty() && random() % 8 != 0)
    {
        auto member = place->begin();
        std::advance(member, static_cast<std::ptrdiff_t>(random() % place->size()));
        place = &*member;
    }
    const Json values[] = {-1,     0,       1,    4000000000U,   18446744073709551615U, 1e30,
                           "text", nullptr, true, Json::array(), Json::object(),        Json::array({0})};
    *place = values[random() % std::size(values)];
}

TEST(ReadGltf, DamagedDocumentsAreReadOrRefused)
{
    GltfDocument document;
    document.AddTriangle();
    document.Primitive()["indices"] = document.Accessor<std::uint8_t>({0, 1, 2}, "SCALAR", 1);
    document.Primitive()["attributes"]["JOINTS_0"] = document.Accessor(std::vector<std::uint8_t>(12, 0), "VEC4", 4);
    document.Primitive()["attributes"]["WEIGHTS_0"] = document.Accessor(std::vector<float>(12, 0.25F), "VEC4", 4);
    document.Primitive()["targets"] = {{{"POSITION", 0}}};
    document.Primitive()["material"] = 0;
    const int times = document.Accessor<float>({0, 1, 2}, "SCALAR", 1);
    document.json.update(Json::parse(R"({"materials":[{"normalTexture":{"index":0}}],"textures":[{"source":0}],
        "images":[{"uri":"a.png"}],"cameras":[{"type":"perspective","perspective":{"yfov":1,"znear":1}}],
        "skins":[{"joints":[1]}],"extensions":{"KHR_lights_punctual":{"lights":[{"type":"spot","spot":{}}]}}})"));
    document.json["nodes"] = Json::parse(R"([{"mesh":0,"skin":0,"children":[1]},
        {"camera":0,"translation":[1,2,3],"extensions":{"KHR_lights_punctual":{"light":0}}}])");
    document.json["animations"] = {{{"samplers", {{{"input", times}, {"output", 0}}}},
                                    {"channels", {{{"sampler", 0}, {"target", {{"node", 1}, {"path", "scale"}}}}}}}};
    ASSERT_EQ(document.Problem(), "");

    const GltfDocument whole = GltfDocument::Parse(document.Text());
    std::mt19937 random(7);
    std::size_t refused = 0;
    constexpr int kRounds = 500;
    for (int i = 0; i < kRounds; ++i)
    {
        GltfDocument damaged = whole;
        Damage(damaged.json, random);
        const std::string problem = damaged.Problem();
        EXPECT_EQ(problem.find('\n'), std::string::npos);
        refused += problem.empty() ? 0 : 1;
    }
    EXPECT_GT(refused, kRounds / 2U);
    EXPECT_LT(refused, static_cast<std::size_t>(kRounds));
}

}  // namespace
