#include <sceneprep/report/Inspection.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/model/EncodePng.h>
#include <support/SceneText.h>
#include <nlohmann/json.hpp>

#include <cstring>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::HasSubstr;

std::string JsonTextOf(Importing::SceneContainer& scene, bool withTree, const Inspection& inspection)
{
    return InspectionJson("models/a.obj", scene, inspection, {}, withTree);
}

nlohmann::json JsonOf(const std::string& sceneText, bool withTree = false)
{
    Importing::SceneContainer scene = Support::Scene(sceneText);
    return nlohmann::json::parse(JsonTextOf(scene, withTree, {.figures = FiguresOf(scene)}));
}

Model ModelOf(const std::string& sceneText)
{
    Model model;
    *model.scene = Support::Scene(sceneText);
    return model;
}

TEST(Inspection, JsonHasTheCountsInOrder)
{
    Importing::SceneContainer scene = Support::Scene("Root[a]");
    SceneFigures figures = FiguresOf(scene);
    figures.viewer = {.drawCalls = 1, .materials = 2, .gpuBytes = 66, .fileBytes = 77};
    const std::string text = JsonTextOf(scene, false, {.figures = figures, .files = {"a.obj"}});
    const auto json = nlohmann::ordered_json::parse(text);
    EXPECT_EQ(json["file"], "models/a.obj");
    EXPECT_EQ(json["files"], (std::vector<std::string>{"a.obj"}));
    EXPECT_EQ(json["fileBytes"], 77);
    EXPECT_EQ(json["gpuBytes"], 66);
    EXPECT_EQ(json["counts"]["vertices"], 8);
    EXPECT_EQ(json["drawCalls"], 1);
    EXPECT_EQ(json["viewerMaterials"], 2);
    EXPECT_EQ(json["world"]["max"], (std::vector<double>{2, 2, 2}));
    EXPECT_EQ(json["counts"].begin().key(), "nodes");
    EXPECT_FALSE(json.contains("nodes"));
    EXPECT_FALSE(json.contains("budget"));
    EXPECT_EQ(text.back(), '\n');
}

TEST(Inspection, JsonHasNamesAndOffsetsOfSurfaces)
{
    Importing::SceneContainer scene = Support::Scene("Root[a=m:c b=n]");
    scene.SurfaceLibrary[1].SetCollisionOffset(3);
    const auto json = nlohmann::json::parse(JsonTextOf(scene, false, {.figures = FiguresOf(scene)}));
    EXPECT_EQ(json["surfaces"][0].dump(), R"({"collisionOffset":0,"geometry":0,"material":0,"name":"a"})");
    EXPECT_EQ(json["surfaces"][1].dump(), R"({"collisionOffset":3,"geometry":1,"material":-1,"name":"b"})");
}

TEST(Inspection, JsonTreeIsAFlatListOfNodes)
{
    const auto json = JsonOf("Root( A*[a b]{eye} B<sun> )", true);
    EXPECT_EQ(json["root"], 0);
    ASSERT_EQ(json["nodes"].size(), 3U);
    EXPECT_EQ(json["nodes"][0]["children"], (std::vector<int>{1, 2}));
    EXPECT_EQ(json["nodes"][1]["name"], "A");
    EXPECT_EQ(json["nodes"][1]["animation"], 0);
    EXPECT_EQ(json["nodes"][1]["surfaces"], (std::vector<int>{0, 1}));
    EXPECT_EQ(json["nodes"][1]["cameras"], (std::vector<int>{0}));
    EXPECT_EQ(json["nodes"][2]["lights"], (std::vector<int>{0}));
    EXPECT_EQ(json["nodes"][2]["animation"], -1);
}

TEST(Inspection, NamesThatAreNotUtf8DoNotBreakJson)
{
    Importing::SceneContainer scene = Support::Scene("Root");
    scene.NodeLibrary[0].SetName("caf\xE9");
    const auto json = nlohmann::json::parse(JsonTextOf(scene, true, {.figures = FiguresOf(scene)}));
    EXPECT_EQ(json["nodes"][0]["name"], "caf\xEF\xBF\xBD");
}

TEST(Inspection, MeshesAreSortedByBytes)
{
    Model model = ModelOf("Root[a=m:c b=n:c c=m]");
    Importing::Geometry& large = model.scene->GeometryLibrary[1];
    large.VertexArray.resize(100);
    for (Importing::Vertex& vertex : large.VertexArray)
        vertex.SetTexCoord({0, 0}, 0);
    large.IndexArray.assign(30, 0);
    large.SetName("Large");
    model.supplement.layouts = {{}, {.texCoordSets = 1, .attributes = {{"COLOR_0", 1, 4}}}};
    const Inspection inspection = InspectModel(model, {}, 7);
    EXPECT_EQ(inspection.figures.viewer.drawCalls, 3U);
    EXPECT_EQ(inspection.figures.viewer.fileBytes, 7U);
    ASSERT_EQ(inspection.meshes.size(), 2U);
    const MeshSummary& mesh = inspection.meshes.front();
    EXPECT_EQ(mesh.name, "Large");
    EXPECT_EQ(mesh.geometry, 1U);
    EXPECT_EQ(mesh.uses, 1U);
    EXPECT_EQ(inspection.meshes.back().uses, 2U);
    EXPECT_EQ(mesh.attributes, (std::vector<std::string>{"POSITION", "NORMAL", "TEXCOORD_0", "COLOR_0"}));
    EXPECT_EQ(mesh.bytes, 100 * (12 + 12 + 8 + 16) + 30 * 2U);
}

TEST(Inspection, MeshesThatAreKeptHaveTheBytesOfTheFile)
{
    Model model = ModelOf("Root[a]");
    model.supplement.meshKeys = {0};
    CarriedPrimitive primitive;
    primitive.attributes["POSITION"].bytes.resize(36);
    primitive.targets.resize(2);
    primitive.targets[0]["POSITION"].bytes.resize(12);
    primitive.indices = CarriedAccessor{.bytes = std::vector<std::uint8_t>(6)};
    model.carried.meshOf = {{.mesh = 0, .primitive = primitive}};
    const MeshSummary mesh = InspectModel(model, {}, 0).meshes.at(0);
    EXPECT_EQ(mesh.bytes, 36 + 12 + 6U);
    EXPECT_EQ(mesh.attributes, (std::vector<std::string>{"POSITION", "2 morph targets"}));
}

TEST(Inspection, TexturesHaveTheirExtentAndBytes)
{
    const TemporaryFolder folder;
    const std::vector<unsigned char> pixels(4 * 6);
    const std::vector<unsigned char> png = EncodePng(pixels.data(), 3, 2);
    folder.Write("wood.png", std::string(png.begin(), png.end()));
    folder.Write("text.png", "no image");
    Model model;
    model.file = folder / "a.gltf";
    model.textures.embedded = {{.fileName = "", .formatHint = "png", .content = png}};
    model.carried.images = {
        {.embedded = 0, .file = {}}, {.file = "wood.png"}, {.file = "text.png"}, {.file = "absent.png"}};
    const std::vector<TextureSummary> textures = InspectModel(model, {}, 0).textures;
    ASSERT_EQ(textures.size(), 4U);
    EXPECT_EQ(textures[0].name, "*0");
    EXPECT_TRUE(textures[0].isEmbedded);
    for (const TextureSummary& texture : {textures[0], textures[1]})
    {
        EXPECT_EQ(texture.kind, "image/png");
        EXPECT_EQ(texture.size, (ImageSize{3, 2}));
        EXPECT_EQ(texture.bytes, png.size());
    }
    EXPECT_EQ(textures[2].bytes, 8U);
    EXPECT_EQ(textures[2].size, std::nullopt);
    EXPECT_EQ(textures[3].bytes, std::nullopt);
}

TEST(Inspection, TexturesOfOtherFormatsAreThoseOfTheLibrary)
{
    const TemporaryFolder folder;
    folder.Write("Wood.PNG", "12345");
    Model model;
    model.file = folder / "a.obj";
    model.scene->AddTextureToLibrary("wood.png", true);
    model.textures.spelling["wood.png"] = "Wood.PNG";
    const std::vector<TextureSummary> textures = InspectModel(model, {}, 0).textures;
    ASSERT_EQ(textures.size(), 1U);
    EXPECT_EQ(textures[0].name, "Wood.PNG");
    EXPECT_EQ(textures[0].bytes, 5U);
}

TEST(Inspection, ClipsHaveTheirDuration)
{
    Model model;
    for (const float last : {0.5F, 2.25F})
    {
        const std::array<float, 2> times = {0, last};
        CarriedAccessor accessor;
        accessor.bytes.resize(sizeof times);
        std::memcpy(accessor.bytes.data(), times.data(), sizeof times);
        model.carried.accessors.push_back(accessor);
    }
    CarriedClip clip;
    clip.object["name"] = "Walk";
    clip.channels.resize(3);
    clip.samplers = {{.input = 1, .output = 0}, {.input = 0, .output = 1}};
    model.carried.clips = {clip};
    const std::vector<ClipSummary> clips = InspectModel(model, {}, 0).clips;
    ASSERT_EQ(clips.size(), 1U);
    EXPECT_EQ(clips[0].name, "Walk");
    EXPECT_EQ(clips[0].seconds, 2.25);
    EXPECT_EQ(clips[0].channels, 3U);
}

TEST(Inspection, TextHasSections)
{
    const Inspection inspection = {
        .figures = {.viewer = {.drawCalls = 9, .fileBytes = 1234}},
        .files = {"a.gltf", "a.bin"},
        .meshes = {{.name = "Big\n", .vertices = 9, .indices = 12, .uses = 2, .bytes = 500, .attributes = {"NORMAL"}}},
        .textures = {{.name = "wood.png", .kind = "image/png", .size = ImageSize{64, 32}, .bytes = 77},
                     {.name = "absent.png"}},
        .materials = {{"Red", 2}, {"", 0}},
        .clips = {{"Walk", 1.5, 3}}};
    const std::string text = InspectionText(inspection);
    EXPECT_THAT(text, HasSubstr("draw calls             9\nfiles                  2\nbytes               1234\n"));
    EXPECT_THAT(text, HasSubstr("\nMeshes have:\n           1  NORMAL\n"));
    EXPECT_THAT(text, HasSubstr("\nLargest meshes (1 of 1):\n"
                                "       bytes    vertices     indices    uses  name\n"
                                "         500           9          12       2  Big\\n\n"));
    EXPECT_THAT(text, HasSubstr("\nTextures:\n"
                                "          77       64 x 32  image/png   wood.png\n"
                                "     missing                            absent.png\n"));
    EXPECT_THAT(
        text, HasSubstr("\nMaterials, and how many surfaces use them:\n           2  Red\n           0  (no name)\n"));
    EXPECT_THAT(text, HasSubstr("\nClips:\n     1.500 s     3 channels  Walk\n"));
}

TEST(Inspection, JsonHasEverySection)
{
    Importing::SceneContainer scene;
    const Inspection inspection = {
        .figures = {},
        .meshes = {{.geometry = 4,
                    .name = "Big",
                    .vertices = 9,
                    .indices = 12,
                    .uses = 2,
                    .bytes = 500,
                    .attributes = {"NORMAL", "POSITION"}},
                   {.attributes = {"POSITION"}}},
        .textures =
            {{.name = "wood.png", .kind = "image/png", .size = ImageSize{64, 32}, .bytes = 77, .isEmbedded = true},
             {.name = "absent.png"}},
        .materials = {{"Red", 2}},
        .clips = {{"Walk", 1.5, 3}}};
    const auto json =
        nlohmann::ordered_json::parse(InspectionJson("a.gltf", scene, inspection, {{"draws", 5, 4}}, false));
    EXPECT_EQ(json["attributes"].dump(), R"({"NORMAL":1,"POSITION":2})");
    EXPECT_EQ(json["meshes"][0].dump(), R"({"geometry":4,"name":"Big","bytes":500,"vertices":9,"indices":12,"uses":2,)"
                                        R"("attributes":["NORMAL","POSITION"]})");
    EXPECT_EQ(json["textures"][0].dump(),
              R"({"name":"wood.png","kind":"image/png","width":64,"height":32,"bytes":77,"embedded":true})");
    EXPECT_EQ(json["textures"][1].dump(),
              R"({"name":"absent.png","kind":null,"width":null,"height":null,"bytes":null,"embedded":false})");
    EXPECT_EQ(json["materials"].dump(), R"([{"name":"Red","uses":2}])");
    EXPECT_EQ(json["clips"].dump(), R"([{"name":"Walk","seconds":1.5,"channels":3}])");
    EXPECT_EQ(json["budget"][0]["exceeded"], true);
}

}  // namespace
