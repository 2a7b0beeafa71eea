#include <sceneprep/report/JsonFigures.h>

#include <gtest/gtest.h>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;

TEST(JsonFigures, CountsKeepTheirOrder)
{
    const Json counts = CountsAsJson({.nodes = 7, .animations = 2});
    EXPECT_EQ(counts.begin().key(), "nodes");
    EXPECT_EQ(counts["nodes"], 7);
    EXPECT_EQ(counts["animations"], 2);
    EXPECT_EQ(counts.size(), 11U);
}

TEST(JsonFigures, AWorldHasSevenFigures)
{
    const Json world = WorldAsJson({.triangles = 3,
                                    .degenerate = 2,
                                    .broken = 1,
                                    .min = {-1, -2, -3},
                                    .max = {4, 5, 6},
                                    .area = 0.5,
                                    .volume = -0.25});
    EXPECT_EQ(world.dump(), R"({"triangles":3,"degenerate":2,"broken":1,"min":[-1.0,-2.0,-3.0],"max":[4.0,5.0,6.0],)"
                            R"("area":0.5,"volume":-0.25})");
}

TEST(JsonFigures, TextThatIsNotUtf8IsReplaced) { EXPECT_EQ(JsonText(Json("caf\xE9")), "\"caf\xEF\xBF\xBD\"\n"); }

}  // namespace
