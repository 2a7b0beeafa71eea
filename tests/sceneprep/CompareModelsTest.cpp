#include <sceneprep/CompareModels.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/compare/TwoTriangles.h>
#include <sceneprep/run/Error.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::HasSubstr;

class CompareModelsTest : public testing::Test
{
protected:
    CompareModelsTest()
    {
        GltfDocument changed = TwoTriangles();
        changed.json["nodes"][1].erase("mesh");
        options_.files = {folder_.Write("a.gltf", TwoTriangles().Text()), folder_.Write("b.gltf", changed.Text())};
    }

    int Run()
    {
        std::ostringstream errors;
        Progress progress(errors, false);
        out_.str("");
        return CompareModels(options_, plugin_, {.out = out_, .errors = errors, .state = state_}, progress);
    }

    PluginLibrary plugin_{SCENEPREP_PLUGIN};
    TemporaryFolder folder_;
    CompareCommand options_;
    std::ostringstream out_;
    WorkState state_;
};

TEST_F(CompareModelsTest, NamesTheDifferencesAndReturnsOne)
{
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_THAT(out_.str(), HasSubstr("b.gltf differs from a.gltf:\n  material 'Red': 1 triangle missing"));
    EXPECT_THAT(out_.str(), testing::ContainsRegex("draw calls +2 +1\n"));
}

TEST_F(CompareModelsTest, ReturnsZeroForModelsThatShowTheSame)
{
    options_.files[1] = options_.files[0];
    EXPECT_EQ(Run(), kDone);
    EXPECT_THAT(out_.str(), HasSubstr("a.gltf matches a.gltf.\nCompared: 2 triangles"));
}

TEST_F(CompareModelsTest, WritesJson)
{
    options_.jsonFile = folder_ / "result.json";
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_THAT(out_.str(), HasSubstr("differs from"));
    const auto json = nlohmann::json::parse(ReadText(options_.jsonFile));
    EXPECT_EQ(json["before"]["drawCalls"], 2);
    EXPECT_EQ(json["after"]["drawCalls"], 1);
    EXPECT_EQ(json["verdict"]["verified"], true);
    EXPECT_EQ(json["verdict"]["differences"][0]["kind"], "triangles");
    EXPECT_EQ(json["verdict"]["differences"][0]["name"], "Red");

    options_.jsonFile = "-";
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_EQ(nlohmann::json::parse(out_.str()), json);
}

TEST_F(CompareModelsTest, RefusesMissingFilesFirst)
{
    options_.files[1] = folder_ / "none.gltf";
    EXPECT_THROW(Run(), ToolError);
}

}  // namespace
