#include <sceneprep/Prepare.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/report/Base64.h>
#include <sceneprep/report/PageText.h>
#include <sceneprep/run/Error.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using namespace SceneprepTests;
using testing::HasSubstr;

/// Runs Prepare() on files of one folder.
class PrepareTest : public testing::Test
{
protected:
    PrepareTest()
    {
        options_.inputs = {WriteSmallObj(folder_)};
        options_.output = folder_ / "out.glb";
    }

    int Run() { return Prepare(options_, plugin_, {.out = out_, .errors = errors_, .state = state_}, progress_); }

    std::string RunError()
    {
        try
        {
            Run();
        }
        catch (const ToolError& error)
        {
            return error.what();
        }
        return "no error";
    }

    PluginLibrary plugin_{SCENEPREP_PLUGIN};
    TemporaryFolder folder_;
    PrepareCommand options_;
    std::ostringstream out_;
    std::ostringstream errors_;
    WorkState state_;
    std::ostringstream told_;
    Progress progress_{told_, false};
};

TEST_F(PrepareTest, WritesTheOutputAndReports)
{
    options_.steps.weld = true;
    EXPECT_EQ(Run(), kDone);
    EXPECT_EQ(ReadText(folder_ / "out.glb").substr(0, 4), "glTF");
    EXPECT_THAT(out_.str(), HasSubstr("The result matches the input.\n"));
    EXPECT_THAT(out_.str(), HasSubstr("\nWeld "));
    EXPECT_THAT(out_.str(), HasSubstr("  0 vertices removed\n"));
    EXPECT_EQ(errors_.str(), "");
}

TEST_F(PrepareTest, ReferencesToTexturesAreRelativeToTheOutput)
{
    std::filesystem::create_directory(folder_ / "deep");
    options_.output = folder_ / "deep/out.gltf";
    Run();
    EXPECT_EQ(nlohmann::json::parse(ReadText(options_.output))["images"][0]["uri"], "../Wood.PNG");
}

/// Writes a triangle whose texture has a name that glTF encodes.
std::string TexturedGltf()
{
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"Top","mesh":0}],
"meshes":[{"name":"Tri","primitives":[{"attributes":{"POSITION":0,"TEXCOORD_0":1},"material":0}]}],
"images":[{"uri":"my%20wood%2525.png"}],"textures":[{"source":0}],
"materials":[{"name":"Wood","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}}],
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]},
{"bufferView":0,"componentType":5126,"count":3,"type":"VEC2"}],
"bufferViews":[{"buffer":0,"byteLength":36}],
"buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})";
}

TEST_F(PrepareTest, NamesOfTextureFilesAreEncodedOnlyInGltf)
{
    const auto gltf = folder_.Write("wood.gltf", TexturedGltf());
    options_.inputs = {gltf};
    options_.output = folder_ / "out.obj";
    EXPECT_EQ(Run(), kDone);
    EXPECT_THAT(ReadText(folder_ / "out.mtl"), HasSubstr("map_Kd my wood%25.png\n"));

    std::filesystem::create_directory(folder_ / "50% of");
    options_.inputs = {folder_.Write("50% of/small.obj", ReadText(folder_ / "small.obj")), gltf};
    folder_.Write("50% of/small.mtl", ReadText(folder_ / "small.mtl"));
    for (const char* name : {"once.gltf", "twice.gltf"})
    {
        options_.output = folder_ / name;
        EXPECT_EQ(Run(), kDone);
        const auto images = nlohmann::json::parse(ReadText(options_.output)).at("images");
        ASSERT_EQ(images.size(), 2U) << name;
        EXPECT_EQ(images[0].at("uri"), "50%25%20of/Wood.PNG");
        EXPECT_EQ(images[1].at("uri"), "my%20wood%2525.png");
        options_.inputs = {options_.output};
    }
}

TEST_F(PrepareTest, JsonHasTheContentOfTheReport)
{
    options_.jsonFile = folder_ / "report.json";
    options_.steps.collisionOffsets = true;
    Run();
    const auto json = nlohmann::json::parse(ReadText(options_.jsonFile));
    EXPECT_EQ(json["inputs"], (std::vector<std::string>{options_.inputs[0].string()}));
    EXPECT_EQ(json["output"], options_.output.string());
    std::vector<std::string> steps;
    for (const auto& step : json["steps"])
        steps.push_back(step["name"]);
    EXPECT_THAT(steps, testing::ElementsAre("Read small.obj", "Import small.obj", "Measure", "Record the input",
                                            "Compute collision offsets", "Measure again", "Export", "Verify"));
    EXPECT_EQ(json["before"]["counts"]["triangles"], 3);
    EXPECT_EQ(json["notes"], (std::vector<std::string>{"the image file '" + (folder_ / "Wood.PNG").string() +
                                                       "' is missing; the reference to it is kept"}));
    EXPECT_TRUE(json["differences"].empty());
    EXPECT_EQ(json["verdict"]["verified"], true);
    EXPECT_EQ(json["before"]["drawCalls"], 3);
    EXPECT_EQ(json["after"]["drawCalls"], 3);
    EXPECT_EQ(json["before"]["fileBytes"],
              std::filesystem::file_size(folder_ / "small.obj") + std::filesystem::file_size(folder_ / "small.mtl"));
    EXPECT_EQ(json["after"]["fileBytes"], std::filesystem::file_size(folder_ / "out.glb"));
    EXPECT_EQ(json["reasons"]["drawCalls"], 3);
    EXPECT_EQ(json["reasons"]["neededByMaterials"], 2);
    EXPECT_EQ(json["reasons"]["groups"][0]["reason"], "points-or-lines");
    EXPECT_TRUE(json["findings"].is_array());
}

TEST_F(PrepareTest, NamesToKeepThatMatchNothingAreANote)
{
    options_.steps.flatten = true;
    options_.steps.keep = {"Squ*", "Circle"};
    EXPECT_EQ(Run(), kDone);
    EXPECT_THAT(told_.str(), HasSubstr("note: --keep 'Circle' matches no node\n"));
    EXPECT_THAT(told_.str(), testing::Not(HasSubstr("'Squ")));
}

TEST_F(PrepareTest, CompanionFilesDoNotReplaceReports)
{
    options_.output = folder_ / "out.gltf";
    options_.jsonFile = folder_ / "out.bin";
    EXPECT_THAT(RunError(), HasSubstr("its companion out.bin is also named as another output"));
    EXPECT_FALSE(std::filesystem::exists(options_.output));
    EXPECT_FALSE(std::filesystem::exists(options_.jsonFile));
}

TEST_F(PrepareTest, TheReportIsAPageIfTheBuildIncludesIt)
{
    options_.reportFile = folder_ / "report.html";
    options_.jsonFile = folder_ / "report.json";
    if (!Report::HasPage())
    {
        EXPECT_EQ(RunError(), "this build of sceneprep has no HTML report; use --json, or install npm and build again");
        EXPECT_FALSE(std::filesystem::exists(options_.output));
        return;
    }
    options_.steps.flatten = true;
    EXPECT_EQ(Run(), kDone);
    const std::string page = ReadText(options_.reportFile);
    EXPECT_THAT(page, testing::StartsWith("<!doctype html>"));
    EXPECT_THAT(page, HasSubstr(ReadText(options_.jsonFile)));
    std::ostringstream output;
    const std::string glb = ReadText(options_.output);
    Report::WriteBase64(output, glb.data(), glb.size());
    EXPECT_THAT(page, HasSubstr("id=\"after-file\">" + output.str() + "<")) << "the view shows the output itself";
    EXPECT_THAT(page, HasSubstr("id=\"before-file\">Z2xURg")) << "the view shows the input as a .glb file";
}

TEST_F(PrepareTest, UnreadableInputsAreSkippedAndReported)
{
    options_.inputs.emplace_back(folder_.Write("broken.glb", "no glTF at all"));
    options_.keepGoing = true;
    EXPECT_EQ(Run(), kUnusable);
    EXPECT_THAT(errors_.str(), testing::MatchesRegex("sceneprep: cannot read [^\n]*broken.glb[^\n]*\n"));
    EXPECT_TRUE(std::filesystem::exists(options_.output));
}

TEST_F(PrepareTest, EachInputHasAnErrorLineIfAllAreSkipped)
{
    options_.inputs = {folder_.Write("a.glb", "no glTF"), folder_.Write("b.glb", "no glTF")};
    options_.keepGoing = true;
    EXPECT_EQ(RunError(), "none of the inputs could be read");
    EXPECT_THAT(errors_.str(), testing::MatchesRegex("sceneprep: cannot read [^\n]*a.glb[^\n]*\nsceneprep: cannot read "
                                                     "[^\n]*b.glb[^\n]*\n"));
    EXPECT_FALSE(std::filesystem::exists(options_.output));
}

TEST_F(PrepareTest, BadPathsAreReportedBeforeTheWork)
{
    options_.jsonFile = folder_ / "no/report.json";
    EXPECT_THAT(RunError(), HasSubstr("there is no folder"));
    options_.jsonFile.clear();
    options_.reportFile = folder_ / "no/report.html";
    EXPECT_THAT(RunError(), HasSubstr("there is no folder"));
    options_.reportFile.clear();
    options_.inputs.emplace_back(folder_ / "none.obj");
    EXPECT_THAT(RunError(), HasSubstr("none.obj: there is no such file"));
    EXPECT_EQ(told_.str(), "");
}

/// Writes a face whose normals point against it.
std::filesystem::path WriteInsideOut(const TemporaryFolder& folder)
{
    return folder.Write("inside.obj", "v 0 0 1\nv 1 0 1\nv 0 1 1\nvn 0 0 -1\no Face\nf 1//1 2//1 3//1\n");
}

TEST_F(PrepareTest, RequestedFlipsAreNotADifference)
{
    options_.inputs = {WriteInsideOut(folder_)};
    options_.steps.fixCulling = true;
    options_.strict = true;
    EXPECT_EQ(Run(), kDone);
    EXPECT_THAT(out_.str(), HasSubstr("  1 triangles flipped\n"));
}

/// Writes a triangle of which welding merges two corners.
std::filesystem::path WriteNearlyEqual(const TemporaryFolder& folder)
{
    return folder.Write("near.obj",
                        "v 10000 0 0\nv 10000.05 0 0\nv 10000 0 0.01\nvn 0 1 0\no Face\nf 1//1 3//1 2//1\n");
}

TEST_F(PrepareTest, StrictWritesNothingThatDiffers)
{
    options_.inputs = {WriteNearlyEqual(folder_)};
    options_.steps.weld = true;
    options_.strict = true;
    options_.jsonFile = folder_ / "report.json";
    EXPECT_THAT(RunError(), HasSubstr("the result differs from the input (material 'DefaultMaterial': 1 triangle "
                                      "missing, at (10000, 0, 0.00333"));
    EXPECT_FALSE(std::filesystem::exists(options_.output));
    EXPECT_THAT(out_.str(), HasSubstr("The result differs from the input:\n  material 'DefaultMaterial': 1 triangle"));
    EXPECT_EQ(nlohmann::json::parse(ReadText(options_.jsonFile))["differences"].size(), 1U);
    options_.strict = false;
    EXPECT_EQ(Run(), kDone);
    EXPECT_THAT(out_.str(), HasSubstr("The result differs from the input:\n  material 'DefaultMaterial': 1 triangle"));
}

TEST_F(PrepareTest, WhatIsNotReadBackIsComparedBeforeTheExport)
{
    options_.inputs = {WriteNearlyEqual(folder_)};
    options_.steps.weld = true;
    options_.verify = false;
    EXPECT_EQ(Run(), kDone);
    EXPECT_THAT(out_.str(), HasSubstr("The result differs from the input:\n  bounds moved by 0.0"));
    EXPECT_THAT(out_.str(), HasSubstr("The written file was not compared: --no-verify skips it.\n"));
}

TEST_F(PrepareTest, MergingRegardlessOfMaterialDiffers)
{
    options_.steps.flatten = true;
    options_.steps.minSurfaces = 0;
    options_.strict = true;
    EXPECT_THAT(RunError(), HasSubstr("replaced by '"));
    EXPECT_FALSE(std::filesystem::exists(options_.output));
}

TEST_F(PrepareTest, MaxGrowthWritesNothingThatIsTooLarge)
{
    options_.maxGrowth = 1.5;
    EXPECT_THAT(RunError(), HasSubstr("the files grow from"));
    EXPECT_FALSE(std::filesystem::exists(options_.output));
    options_.maxGrowth = 100;
    EXPECT_EQ(Run(), kDone);
    EXPECT_TRUE(std::filesystem::exists(options_.output));
}

TEST_F(PrepareTest, StrictWritesNothingIfSomethingIsLost)
{
    options_.inputs = {
        folder_.Write("plain.obj", "mtllib small.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl Blue\nf 1 2 3\n")};
    options_.output = folder_ / "out.stl";
    options_.jsonFile = folder_ / "report.json";
    options_.strict = true;
    EXPECT_THAT(RunError(), HasSubstr("out.stl: this would be lost: materials; allow it by --allow-loss NAME"));
    EXPECT_FALSE(std::filesystem::exists(options_.output));
    EXPECT_THAT(out_.str(), HasSubstr("Lost:\n  materials: "));
    EXPECT_EQ(nlohmann::json::parse(ReadText(options_.jsonFile))["losses"][0]["name"], "materials");
    options_.allowedLosses = {"materials"};
    EXPECT_EQ(RunError(), "no error");
    EXPECT_TRUE(std::filesystem::exists(options_.output));
}

/// Two nodes whose meshes have one material; the first mesh has tangents, both nodes and meshes have extras.
std::filesystem::path WriteFileWithExtras(const TemporaryFolder& folder)
{
    return folder.Write("extras.gltf", R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
        "extensionsUsed":["ACME_tag"],
        "nodes":[{"children":[1,2]},{"mesh":0,"extras":1},{"mesh":1,"extensions":{"ACME_tag":{}}}],
        "meshes":[{"extras":2,"primitives":[{"attributes":{"POSITION":0,"NORMAL":1,"TANGENT":2}}]},
            {"primitives":[{"attributes":{"POSITION":0,"NORMAL":1}}]}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]},
            {"bufferView":1,"componentType":5126,"count":3,"type":"VEC3"},
            {"bufferView":2,"componentType":5126,"count":3,"type":"VEC4"}],
        "bufferViews":[{"buffer":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":36},
            {"buffer":0,"byteOffset":72,"byteLength":48}],
        "buffers":[{"byteLength":120,"uri":"data:application/octet-stream;base64,)"
                                       "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"
                                       "AAAAAAAAAAAAAIA/AAAAAAAAAAAAAIA/AAAAAAAAAAAAAIA/"
                                       "AACAPwAAAAAAAAAAAACAPwAAgD8AAAAAAAAAAAAAgD8AAIA/AAAAAAAAAAAAAIA/"
                                       R"("}]})");
}

TEST_F(PrepareTest, WhatFlatteningDropsIsLost)
{
    options_.inputs = {WriteFileWithExtras(folder_)};
    options_.steps.flatten = true;
    options_.strict = true;
    EXPECT_THAT(RunError(), HasSubstr("would be lost: tangents, node-extras, extension ACME_tag, mesh-extras; "));
    EXPECT_FALSE(std::filesystem::exists(options_.output));
    options_.allowedLosses = {"tangents", "node-extras", "extension ACME_tag", "mesh-extras"};
    EXPECT_EQ(RunError(), "no error");
    EXPECT_THAT(out_.str(), HasSubstr("  tangents: meshes lost their tangents for merging (1)\n"
                                      "  node-extras: dropped the extras of nodes that were collapsed (1)\n"));
}

TEST_F(PrepareTest, WithoutStepsNothingIsLost)
{
    options_.inputs = {WriteFileWithExtras(folder_)};
    options_.strict = true;
    EXPECT_EQ(RunError(), "no error");
    EXPECT_THAT(out_.str(), testing::Not(HasSubstr("Lost:")));
}

TEST_F(PrepareTest, NotesTrianglesWithoutArea)
{
    options_.inputs = {folder_.Write("flat.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 2 0 0\nf 1 2 3\nf 1 2 4\n")};
    Run();
    EXPECT_THAT(told_.str(), HasSubstr("note: triangles have no area (1)\n"));
}

}  // namespace
