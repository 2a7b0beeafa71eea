#include <sceneprep/report/PrepareReport.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <support/SceneText.h>
#include <nlohmann/json.hpp>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using testing::HasSubstr;

/// What the text of MakeReport() has between verdict and steps.
constexpr const char* kReasons =
    "3 draw calls; 2 more than materials need: 2 skinned\nFindings:\n  no texture uses UV set 0 of 1 mesh: "
    "'a'\n\nWeld ";

PrepareReport MakeReport()
{
    Importing::SceneContainer scene = Support::Scene("Root( A[a] )");
    PrepareReport report;
    report.inputs = {"a.obj", "b.obj"};
    report.skipped = {"c.off"};
    report.output = "out.glb";
    report.before = report.after = FiguresOf(scene);
    report.steps = {{"Weld", 1.5, {{"said", 2, 9}}, {{"vertices removed", 7}}}};
    report.notes.Add("a note");
    report.reasons = {
        .drawCalls = 3, .needed = 1, .groups = {{"c", Pipeline::MergeReason::Skinned, "", 2, {{"A", "a", 0}}}}};
    report.findings = {{"unused-uvs", "no texture uses UV set 0 of 1 mesh: 'a'", {"a"}, 1}};
    return report;
}

TEST(PrepareReport, FiguresAreCountsAndWorld)
{
    const PrepareReport report = MakeReport();
    EXPECT_EQ(report.before.counts.nodes, 2U);
    EXPECT_EQ(report.before.world.triangles, 12U);
}

TEST(PrepareReport, TextEndsTheTablesWithAVerdict)
{
    PrepareReport report = MakeReport();
    EXPECT_THAT(
        ReportText(report),
        HasSubstr(std::string("volume                 1           1\nThe result matches the input.\n") + kReasons));
    report.verdict.differences = {{"triangles", "Red", "one thing"}, {"clip", "Walk", "another\nline"}};
    report.verdict.compared = {"positions", "clips"};
    EXPECT_THAT(ReportText(report), HasSubstr(std::string("The result differs from the input:\n  one thing\n"
                                                          "  another line\nCompared: positions; clips.\n") +
                                              kReasons));
    report.verdict.reason = "nothing was written";
    EXPECT_THAT(ReportText(report), HasSubstr("The written file was not compared: nothing was written.\n"));
}

TEST(PrepareReport, TextHasDrawCallsAndSizes)
{
    PrepareReport report = MakeReport();
    report.before.SetViewer({.nodes = 2192, .drawCalls = 1494, .materials = 13, .gpuBytes = 70, .fileBytes = 217000});
    report.after.SetViewer({.nodes = 40, .drawCalls = 46, .materials = 13, .gpuBytes = 80, .fileBytes = 112000000});
    EXPECT_THAT(ReportText(report), HasSubstr("nodes               2192          40\n"));
    EXPECT_THAT(ReportText(report), HasSubstr("draw calls          1494          46\n"
                                              "file bytes        217000   112000000\n"
                                              "GPU bytes             70          80\n"));
}

TEST(PrepareReport, TextListsLossesByName)
{
    PrepareReport report = MakeReport();
    report.notes.AddLoss("cameras", "cameras are\ndropped", 2);
    EXPECT_THAT(ReportText(report), HasSubstr(std::string("Lost:\n  cameras: cameras are dropped (2)\n") + kReasons));
}

TEST(PrepareReport, JsonFollowsItsSchema)
{
    PrepareReport report = MakeReport();
    report.notes.AddLoss("cameras", "cameras are dropped", 2);
    report.verdict = {
        .isVerified = true, .compared = {"positions"}, .differences = {{"triangles", "Red", "one thing"}}};
    report.before.SetViewer({.nodes = 2192, .drawCalls = 1494, .materials = 13});
    report.after.SetViewer({.nodes = 40, .materials = 12, .gpuBytes = 2000000, .fileBytes = 2100000});
    const auto json = nlohmann::json::parse(ReportJson(report));
    EXPECT_EQ(json["schema"], 1);
    EXPECT_EQ(json["inputs"], (std::vector<std::string>{"a.obj", "b.obj"}));
    EXPECT_EQ(json["leftOut"], (std::vector<std::string>{"c.off"}));
    EXPECT_EQ(json["output"], "out.glb");
    EXPECT_EQ(json["before"]["counts"]["surfaces"], 1);
    EXPECT_EQ(json["after"]["world"]["max"], (std::vector<double>{2, 2, 2}));
    EXPECT_EQ(json["steps"][0]["name"], "Weld");
    EXPECT_EQ(json["steps"][0]["milliseconds"], 1.5);
    EXPECT_EQ(json["steps"][0]["changes"]["vertices removed"], 7);
    EXPECT_EQ(json["steps"][0]["messages"][0]["text"], "said");
    EXPECT_EQ(json["steps"][0]["messages"][0]["sum"], 9);
    EXPECT_EQ(json["notes"][0], "a note");
    EXPECT_EQ(json["notes"][1], "cameras are dropped (2)");
    EXPECT_EQ(json["losses"].size(), 1U);
    EXPECT_EQ(json["losses"][0]["name"], "cameras");
    EXPECT_EQ(json["losses"][0]["text"], "cameras are dropped (2)");
    EXPECT_EQ(json["differences"], (std::vector<std::string>{"one thing"}));
    EXPECT_EQ(json["verdict"]["verified"], true);
    EXPECT_EQ(json["verdict"]["reason"], "");
    EXPECT_EQ(json["verdict"]["compared"][0], "positions");
    EXPECT_EQ(json["verdict"]["differences"][0]["kind"], "triangles");
    EXPECT_EQ(json["verdict"]["differences"][0]["name"], "Red");
    EXPECT_EQ(json["verdict"]["differences"][0]["text"], "one thing");
    EXPECT_EQ(json["before"]["drawCalls"], 1494);
    EXPECT_EQ(json["before"]["viewerMaterials"], 13);
    EXPECT_EQ(json["after"]["fileBytes"], 2100000);
    EXPECT_EQ(json["after"]["gpuBytes"], 2000000);
    EXPECT_EQ(json["after"]["counts"]["nodes"], 40);
    EXPECT_EQ(json["after"]["counts"]["materials"], 12);
    EXPECT_EQ(json["reasons"]["groups"][0]["text"], "2 skinned");
    EXPECT_EQ(json["findings"][0]["kind"], "unused-uvs");
}

/// Appends the keys below a value, except those of the changes of steps, which are not fixed.
void CollectKeys(const nlohmann::json& value, std::vector<std::string>& keys)
{
    if (!value.is_structured())
        return;
    for (const auto& [key, inner] : value.items())
    {
        if (value.is_object())
            keys.push_back(key);
        if (key != "changes")
            CollectKeys(inner, keys);
    }
}

TEST(PrepareReport, ThePageExplainsEveryKey)
{
    const std::string page = SceneprepTests::ReadText(SCENEPREP_PAGE);
    std::vector<std::string> keys;
    PrepareReport report = MakeReport();
    report.notes.AddLoss("cameras", "cameras are dropped", 2);
    report.verdict.differences = {{"triangles", "Red", "one thing"}};
    CollectKeys(nlohmann::json::parse(ReportJson(report)), keys);
    EXPECT_GT(keys.size(), 20U);
    for (const std::string& key : keys)
        EXPECT_THAT(page, HasSubstr('`' + key + '`'));
}

TEST(PrepareReport, FiguresHaveTheNumbersThatBudgetsLimit)
{
    Importing::SceneContainer scene = Support::Scene("Root( A[a=m:c] B[a b=m] C[a] )");
    SceneFigures figures = FiguresOf(scene);
    figures.SetViewer({.nodes = 3, .drawCalls = 5, .materials = 2, .fileBytes = 77});
    const ModelSize size = SizeOf(figures);
    EXPECT_EQ(size.draws, 5U);
    EXPECT_EQ(size.triangles, 4 * 12U);
    EXPECT_EQ(size.vertices, figures.counts.vertices);
    EXPECT_EQ(size.nodes, 3U);
    EXPECT_EQ(size.materials, 2U);
    EXPECT_EQ(size.textures, 0U);
    EXPECT_EQ(size.bytes, 77U);
}

TEST(PrepareReport, HasTheBudget)
{
    PrepareReport report = MakeReport();
    EXPECT_FALSE(nlohmann::json::parse(ReportJson(report)).contains("budget"));
    report.budget = {{"draws", 5, 4}};
    EXPECT_EQ(nlohmann::json::parse(ReportJson(report))["budget"][0]["value"], 5);
    EXPECT_THAT(ReportText(report), HasSubstr("Over budget:         value         limit\n  draws "));
}

}  // namespace
