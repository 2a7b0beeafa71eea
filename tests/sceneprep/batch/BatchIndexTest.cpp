#include <sceneprep/batch/BatchIndex.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Batch;
using namespace SceneprepTests;

const char* const kReport =
    R"({"before":{"drawCalls":64},"after":{"drawCalls":4},"steps":[{"milliseconds":1000},{"milliseconds":250.5}]})";

class BatchIndexTest : public testing::Test
{
protected:
    ModelResult Read() const
    {
        return ReadResult({.name = {},
                           .input = {},
                           .output = folder_ / "a.glb",
                           .report = folder_ / "a.json",
                           .depfile = {},
                           .log = folder_ / "a.log",
                           .status = folder_ / "a.status"},
                          {"sub/a.obj", "sub/a.glb"});
    }

    TemporaryFolder folder_;
};

TEST_F(BatchIndexTest, ReadsTheFilesOfARun)
{
    folder_.Write("a.glb", "12345");
    folder_.Write("a.json", kReport);
    folder_.Write("a.status", "0\n");
    const ModelResult result = Read();
    EXPECT_EQ(result.model, "sub/a.obj");
    EXPECT_EQ(result.exitStatus, kDone);
    EXPECT_EQ(result.problem, "");
    EXPECT_EQ(result.bytes, 5U);
    EXPECT_EQ(result.report["after"]["drawCalls"], 4);
    EXPECT_TRUE(AreAllDone({result}));
}

TEST_F(BatchIndexTest, AFailedRunHasItsLastErrorLineAndNoOlderReport)
{
    folder_.Write("a.glb", "12345");
    folder_.Write("a.json", kReport);
    folder_.Write("a.status", "1\n");
    folder_.Write("a.log", "sceneprep: note\nsceneprep: cannot read a.obj\n");
    const ModelResult result = Read();
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.problem, "sceneprep: cannot read a.obj");
    EXPECT_TRUE(result.report.empty());
    EXPECT_EQ(result.bytes, 0U);
    EXPECT_FALSE(AreAllDone({result}));
}

TEST_F(BatchIndexTest, WithoutAStatusTheModelWasNotRun)
{
    EXPECT_EQ(Read().exitStatus, ModelResult::kNotRun);
    folder_.Write("a.status", "");
    EXPECT_EQ(Read().exitStatus, ModelResult::kNotRun);
    EXPECT_FALSE(AreAllDone({Read()}));
}

std::vector<ModelResult> SomeResults()
{
    return {{"a.obj", "a.glb", 0, "", Json::parse(kReport), 123456},
            {"sub/long name.obj", "sub/long name.glb", 1, "sceneprep: cannot read it", Json::object(), 0},
            {"c.obj", "c.glb", 3, "", Json::parse(kReport), 7},
            {"d.obj", "d.glb", -1, "", Json::object(), 0}};
}

TEST(BatchIndex, TheTableHasARowForEachModel)
{
    EXPECT_EQ(ResultTable(SomeResults()),
              "model              status             draw calls         bytes   seconds\n"
              "a.obj              done                  64 -> 4        123456      1.25\n"
              "sub/long name.obj  failed                                               \n"
              "c.obj              over budget           64 -> 4             7      1.25\n"
              "d.obj              not run                                              \n"
              "sceneprep: cannot read it\n"
              "1 of 4 models prepared\n");
}

TEST(BatchIndex, JsonHasTheReports)
{
    const Json json = IndexAsJson(SomeResults());
    EXPECT_EQ(json["schema"], 1);
    EXPECT_EQ(json["failed"], 3);
    EXPECT_EQ(json["models"].size(), 4U);
    EXPECT_EQ(json["models"][0]["status"], "done");
    EXPECT_EQ(json["models"][0]["output"], "a.glb");
    EXPECT_EQ(json["models"][0]["report"]["before"]["drawCalls"], 64);
    EXPECT_EQ(json["models"][0]["seconds"], 1.2505);
    EXPECT_EQ(json["models"][1]["problem"], "sceneprep: cannot read it");
    EXPECT_EQ(json["models"][2]["exitStatus"], 3);
}

}  // namespace
