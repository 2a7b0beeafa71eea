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

TEST_F(InspectTest, PrintsFindings)
{
    const std::filesystem::path input = folder_.Write("flat.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nf 1/1 2/1 3/1\n");
    Run({.input = input, .json = false, .tree = false});
    EXPECT_THAT(out_.str(), HasSubstr("\nFindings:\n  no texture uses UV set 0 of 1 mesh: "));
    out_.str("");
    Run({.input = input, .json = true, .tree = false});
    EXPECT_EQ(nlohmann::json::parse(out_.str())["findings"][0]["kind"], "unused-uvs");
}

TEST_F(InspectTest, PrintsFilesMeshesTexturesAndMaterials)
{
    folder_.Write("Wood.PNG", "image");
    Run({.input = WriteSmallObj(folder_)});
    EXPECT_THAT(out_.str(), HasSubstr("draw calls             3\nfiles                  3\n"));
    EXPECT_THAT(out_.str(), HasSubstr("  TEXCOORD_0\n"));
    EXPECT_THAT(out_.str(), HasSubstr("\nTextures:\n           5                            Wood.PNG\n"));
    EXPECT_THAT(out_.str(), HasSubstr("           2  Blue\n"));
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
