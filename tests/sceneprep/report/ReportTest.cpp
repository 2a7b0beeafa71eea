#include <sceneprep/report/Report.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/SceneText.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;

const SceneStats kBefore = {.nodes = 2000,
                            .surfaces = 1500,
                            .geometries = 1500,
                            .vertices = 36000,
                            .triangles = 18000,
                            .materials = 8,
                            .textures = 3,
                            .cameras = 1,
                            .lights = 2,
                            .joints = 24,
                            .animations = 0};

TEST(Report, ComparesBeforeAndAfter)
{
    SceneStats after = kBefore;
    after.nodes = 1;
    after.surfaces = after.geometries = 8;
    EXPECT_EQ(ComparisonTable(kBefore, after),
              "                  before       after\n"
              "nodes               2000           1\n"
              "surfaces            1500           8\n"
              "geometries          1500           8\n"
              "vertices           36000       36000\n"
              "triangles          18000       18000\n"
              "materials              8           8\n"
              "textures               3           3\n"
              "cameras                1           1\n"
              "lights                 2           2\n"
              "joints                24          24\n"
              "animations             0           0\n");
}

TEST(Report, OneSceneHasOneColumn)
{
    EXPECT_THAT(StatsTable(kBefore), testing::StartsWith("nodes               2000\nsurfaces            1500\n"));
}

TEST(Report, StepsHaveTimesAndMessagesOfThePlugin)
{
    EXPECT_EQ(TimesTable({{"Import", 12.34, {}, {}},
                          {"Flatten", 5.0, {{"Flatten node finished :", 2, 3}, {"Merging finished :", 1, 0}}, {}},
                          {"Weld", 1.0, {}, {{"vertices removed", 7}}}}),
              "Import                       12.3 ms\n"
              "Flatten                       5.0 ms\n"
              "  Flatten node finished : 3 ms in 2 passes\n"
              "  Merging finished : 0 ms in 1 pass\n"
              "Weld                          1.0 ms\n"
              "  7 vertices removed\n");
}

TEST(Report, JsonHoldsTheCountsInOrder)
{
    Importing::SceneContainer scene = Support::Scene("Root[a]");
    const std::string text = InspectionJson("models/a.obj", scene, Measure(scene), false);
    const auto json = nlohmann::ordered_json::parse(text);
    EXPECT_EQ(json["file"], "models/a.obj");
    EXPECT_EQ(json["counts"]["vertices"], 8);
    EXPECT_EQ(json["world"]["max"], (std::vector<double>{2, 2, 2}));
    EXPECT_EQ(json["counts"].begin().key(), "nodes");
    EXPECT_FALSE(json.contains("nodes"));
    EXPECT_EQ(text.back(), '\n');
}

TEST(Report, MeasuresArePrintedNextToEachOther)
{
    const WorldMeasure before = {.triangles = 1234567, .min = {-1, -2.5, 0}, .max = {1, 2, 3}, .area = 40, .volume = 8};
    WorldMeasure after = before;
    after.volume = -8;
    EXPECT_EQ(WorldTable({before, after}),
              "shown            1234567     1234567\n"
              "min x                 -1          -1\n"
              "min y               -2.5        -2.5\n"
              "min z                  0           0\n"
              "max x                  1           1\n"
              "max y                  2           2\n"
              "max z                  3           3\n"
              "area                  40          40\n"
              "volume                 8          -8\n");
}

TEST(Report, JsonHoldsNamesAndOffsetsOfSurfaces)
{
    Importing::SceneContainer scene = Support::Scene("Root[a=m:c b=n]");
    scene.SurfaceLibrary[1].SetCollisionOffset(3);
    const auto json = nlohmann::json::parse(InspectionJson("a.obj", scene, Measure(scene), false));
    EXPECT_EQ(json["surfaces"][0].dump(), R"({"collisionOffset":0,"geometry":0,"material":0,"name":"a"})");
    EXPECT_EQ(json["surfaces"][1].dump(), R"({"collisionOffset":3,"geometry":1,"material":-1,"name":"b"})");
}

TEST(Report, JsonTreeIsAFlatListOfNodes)
{
    Importing::SceneContainer scene = Support::Scene("Root( A*[a b]{eye} B<sun> )");
    const auto json = nlohmann::json::parse(InspectionJson("a.obj", scene, Measure(scene), true));
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

TEST(Report, NamesThatAreNotUtf8DoNotBreakJson)
{
    Importing::SceneContainer scene = Support::Scene("Root");
    scene.NodeLibrary[0].SetName("caf\xE9");
    const auto json = nlohmann::json::parse(InspectionJson("a.obj", scene, Measure(scene), true));
    EXPECT_EQ(json["nodes"][0]["name"], "caf\xEF\xBF\xBD");
}

}  // namespace
