#include <sceneprep/report/Report.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

}  // namespace
