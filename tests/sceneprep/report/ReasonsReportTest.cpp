#include <sceneprep/report/ReasonsReport.h>

#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using Pipeline::MergeReason;
using Pipeline::MergeReasons;

MergeReasons Windmill()
{
    return {.drawCalls = 46,
            .needed = 13,
            .groups = {{"Wood", MergeReason::AnimatedNode, "rotor", 20, {{"sail", "Sail", 12}}},
                       {"Iron", MergeReason::AnimatedNode, "rotor", 10, {}},
                       {"Wood", MergeReason::VertexLimit, "", 3, {}}}};
}

TEST(ReasonsReport, TextAddsUpMaterials)
{
    EXPECT_EQ(ReasonsText(Windmill()),
              "46 draw calls; 33 more than materials need: 30 below animated node 'rotor', 3 vertex limit\n");
    EXPECT_EQ(ReasonsText({.drawCalls = 13, .needed = 13, .groups = {}}),
              "13 draw calls, one for each material in use\n");
    EXPECT_EQ(ReasonsText({.drawCalls = 1, .needed = 1, .groups = {}}), "1 draw call, one for each material in use\n");
}

TEST(ReasonsReport, TextIsOneLineOfLimitedLength)
{
    MergeReasons reasons{.drawCalls = 21, .needed = 1, .groups = {}};
    for (int i = 0; i < 10; ++i)
        reasons.groups.push_back({"Wood", MergeReason::AnimatedNode, "a\nb" + std::to_string(i), 2, {}});
    EXPECT_EQ(ReasonsText(reasons),
              "21 draw calls; 20 more than materials need: 2 below animated node 'a b0', 2 below animated node 'a b1', "
              "2 below animated node 'a b2', 2 below animated node 'a b3', 2 below animated node 'a b4', 10 for 5 "
              "further reasons\n");
}

TEST(ReasonsReport, JsonListsGroupsWithTheirSurfaces)
{
    const Json json = ReasonsAsJson(Windmill());
    EXPECT_EQ(json["drawCalls"], 46);
    EXPECT_EQ(json["neededByMaterials"], 13);
    EXPECT_EQ(json["groupCount"], 3);
    EXPECT_EQ(json["groups"][0].dump(),
              R"({"material":"Wood","reason":"animated-node","subject":"rotor","surplus":20,)"
              R"("text":"20 below animated node 'rotor'","surfaces":[{"node":"sail","mesh":"Sail","surface":12}]})");
}

TEST(ReasonsReport, JsonListsTheLargestGroupsOnly)
{
    MergeReasons reasons{.drawCalls = 2001, .needed = 1, .groups = {}};
    reasons.groups.resize(2000, {"Wood", MergeReason::AnimatedNode, "x", 1, {}});
    EXPECT_EQ(ReasonsAsJson(reasons)["groups"].size(), 1000U);
    EXPECT_EQ(ReasonsAsJson(reasons)["groupCount"], 2000);
}

}  // namespace
