#include <sceneprep/Inspect.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace
{

using namespace Sceneprep;
using namespace SceneprepTests;
using testing::HasSubstr;

class InspectTest : public testing::Test
{
protected:
    void Run(const InspectOptions& options)
    {
        Progress progress(errors_, false);
        Inspect(options, plugin_, {.out = out_, .errors = errors_, .state = state_}, progress);
    }

    PluginLibrary plugin_{SCENEPREP_PLUGIN};
    TemporaryFolder folder_;
    std::ostringstream out_;
    std::ostringstream errors_;
    WorkState state_;
};

TEST_F(InspectTest, PrintsCountsAndTree)
{
    Run({.input = WriteSmallObj(folder_), .json = false, .tree = true});
    EXPECT_THAT(out_.str(), HasSubstr("materials              2\n"));
    EXPECT_THAT(out_.str(), HasSubstr("max z                  2\n"));
    EXPECT_THAT(out_.str(), HasSubstr("\n  Square (1 surface)\n"));
}

TEST_F(InspectTest, PrintsJson)
{
    const std::filesystem::path input = WriteSmallObj(folder_);
    Run({.input = input, .json = true, .tree = false});
    const auto json = nlohmann::json::parse(out_.str());
    EXPECT_EQ(json["file"], input.string());
    EXPECT_EQ(json["counts"]["triangles"], 3);
    EXPECT_FALSE(json.contains("nodes"));
}

TEST_F(InspectTest, PrintsNotes)
{
    const auto input = folder_.Write("flat.obj", "v 0 0 0\nv 1 0 0\nv 2 0 0\nf 1 2 3\nl 1 2\n");
    for (const bool json : {false, true})
    {
        errors_.str("");
        Run({.input = input, .json = json, .tree = false});
        EXPECT_THAT(errors_.str(), HasSubstr("note: triangles have no area (1)\n"));
    }
}

}  // namespace
