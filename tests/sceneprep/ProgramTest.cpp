#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <nlohmann/json.hpp>

// Runs the program that was built, as a user does.

namespace
{

using namespace SceneprepTests;
using testing::HasSubstr;

std::string Workshop() { return std::string(SCENEPREP_EXAMPLES) + "/workshop.gltf"; }

TEST(Program, PreparesTheBundledScene)
{
    const TemporaryFolder folder;
    const ProgramRun run = RunProgram("prepare " + Workshop() + " --flatten -o " + (folder / "flat.glb").string());
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr("before       after\n"));
    EXPECT_THAT(run.output, HasSubstr("Flatten node finished : "));
    EXPECT_THAT(run.output, HasSubstr("\n16 draw calls; 3 more than materials need: 3 below animated node '"));
    EXPECT_THAT(run.errors, testing::StartsWith("Read workshop.gltf ...\nImport workshop.gltf ...\n"));
    EXPECT_EQ(ReadText(folder / "flat.glb").substr(0, 4), "glTF");

    const ProgramRun inspection = RunProgram("inspect --json " + (folder / "flat.glb").string());
    EXPECT_EQ(inspection.status, 0) << inspection.errors;
    const auto flat = nlohmann::json::parse(inspection.output)["counts"];
    const auto original = nlohmann::json::parse(RunProgram("inspect --json " + Workshop()).output)["counts"];
    EXPECT_LT(flat["nodes"], 100);    // cameras, lights and the animated part
    EXPECT_EQ(flat["surfaces"], 16);  // one for each of 13 materials, and three that move
    EXPECT_GT(original["nodes"], 1500);
    EXPECT_EQ(flat["materials"], original["materials"]);
}

TEST(Program, PrintsTheSameInOneProcess)
{
    const TemporaryFolder folder;
    const std::string arguments = "inspect --tree " + WriteSmallObj(folder).string();
    const ProgramRun isolated = RunProgram(arguments);
    const ProgramRun single = RunProgram(arguments + " --no-isolation");
    EXPECT_EQ(single.status, 0);
    EXPECT_EQ(single.output, isolated.output);
    EXPECT_EQ(single.errors, isolated.errors);
}

TEST(Program, AnUnusableInputExitsWithOne)
{
    const ProgramRun run = RunProgram("inspect /no/such.obj");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "sceneprep: cannot read /no/such.obj: there is no such file; check the path\n");
}

TEST(Program, ABrokenInputExitsWithOneAndWritesNothing)
{
    const TemporaryFolder folder;
    const std::string broken = folder.Write("broken.glb", "no glTF at all").string();
    const ProgramRun run = RunProgram("prepare " + broken + " -o " + (folder / "out.glb").string());
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("sceneprep: cannot read " + broken + ": "));
    EXPECT_EQ(folder.CountEntries(), 1U);
}

TEST(Program, AnotherPluginCanBeChosen)
{
    EXPECT_EQ(RunProgram("inspect " + Workshop() + " --plugin " SCENEPREP_PLUGIN).status, 0);
    const ProgramRun run =
        RunProgram("inspect " + Workshop() + " --plugin " SCENEPREP_FAKE_PLUGINS "/libFakeOtherName.so");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("contributes the channel type 'SomethingElse'"));
}

TEST(Program, BadUsageExitsWithTwo)
{
    for (const char* arguments :
         {"", "bogus", "prepare", "prepare in.obj", "prepare in.obj -o out.zzz", "inspect in.obj --flatten",
          "prepare in.obj -o out.glb --max-vertices 3", "prepare in.obj -o out.glb --uvs flat", "inspect a.obj b.obj"})
    {
        const ProgramRun run = RunProgram(arguments);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_EQ(run.output, "") << arguments;
        EXPECT_THAT(run.errors, testing::MatchesRegex("sceneprep: [^\n]+ --help'\n")) << arguments;
    }
}

TEST(Program, ReplacesItsInputInPlace)
{
    const TemporaryFolder folder;
    for (const char* name : {"workshop.gltf", "workshop.bin"})
        std::filesystem::copy_file(std::filesystem::path(SCENEPREP_EXAMPLES) / name, folder / name);
    const std::string file = (folder / "workshop.gltf").string();
    const std::string before = ReadText(file);
    const std::string arguments = "prepare " + file + " --flatten --quiet -o " + file;
    EXPECT_EQ(RunProgram(arguments).status, 2);
    EXPECT_EQ(ReadText(file), before);

    const ProgramRun run = RunProgram(arguments + " --in-place");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(ReadText(file), before);
    EXPECT_EQ(folder.CountEntries(), 2U);
    const auto json = nlohmann::json::parse(RunProgram("inspect --json " + file).output);
    EXPECT_EQ(json["world"]["triangles"], 49818);
    EXPECT_LT(json["counts"]["nodes"], 100);
}

TEST(Program, ABudgetThatIsExceededExitsWithThreeAndStillWrites)
{
    const TemporaryFolder folder;
    const std::string arguments = "prepare " + Workshop() + " --flatten --quiet --json - -o " +
                                  (folder / "out.glb").string() + " --budget draws=1,materials=1k";
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.status, 3) << run.errors;
    const auto report = nlohmann::json::parse(run.output);
    EXPECT_EQ(report["budget"][0]["name"], "draws");
    EXPECT_EQ(report["budget"][0]["value"], report["after"]["drawCalls"]);
    EXPECT_EQ(report["budget"][0]["exceeded"], true);
    EXPECT_EQ(report["budget"][1]["limit"], 1000);
    EXPECT_EQ(report["budget"][1]["exceeded"], false);
    const std::string bytes = std::to_string(std::filesystem::file_size(folder / "out.glb"));
    const std::string output = (folder / "out.glb").string();
    const std::string draws = report["after"]["drawCalls"].dump();
    EXPECT_EQ(RunProgram("inspect --quiet " + output + " --budget bytes=" + bytes + ",draws=" + draws).status, 0);
    const ProgramRun over = RunProgram("inspect --quiet " + output + " --budget bytes=1k,draws=" + draws);
    EXPECT_EQ(over.status, 3);
    EXPECT_THAT(over.output, HasSubstr("Over budget:         value         limit\n  bytes "));
    EXPECT_THAT(over.output, testing::Not(HasSubstr("\n  draws ")));
}

TEST(Program, ADryRunReportsWithoutWriting)
{
    const TemporaryFolder folder;
    const std::string small = WriteSmallObj(folder).string();
    const std::size_t before = folder.CountEntries();
    const ProgramRun named = RunProgram("prepare " + small + " --dry-run --all -o " + (folder / "out.gltf").string());
    EXPECT_EQ(named.status, 0) << named.errors;
    EXPECT_THAT(named.output, HasSubstr("\nExport "));
    const ProgramRun unnamed = RunProgram("prepare " + small + " --dry-run --json - --budget bytes=10");
    EXPECT_EQ(unnamed.status, 3) << unnamed.errors;
    const auto report = nlohmann::json::parse(unnamed.output);
    EXPECT_EQ(report["output"], "");
    EXPECT_GT(report["budget"][0]["value"], 100);
    EXPECT_EQ(folder.CountEntries(), before);
}

TEST(Program, ListsTheFilesThatInputsReferToForMakeAndNinja)
{
    const TemporaryFolder folder;
    const std::string small = WriteSmallObj(folder).string();
    const std::string output = (folder / "out.stl").string();
    const ProgramRun run =
        RunProgram("prepare " + small + " --quiet -o " + output + " --depfile " + (folder / "out.d").string());
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(ReadText(folder / "out.d"), output + ": \\\n  " + (folder / "small.mtl").string() + "\n");
}

TEST(Program, HelpAndVersionAndFormatsExitWithZero)
{
    for (const char* arguments :
         {"--help", "prepare --help", "inspect --help", "batch --help", "formats --help", "--version", "formats"})
    {
        const ProgramRun run = RunProgram(arguments);
        EXPECT_EQ(run.status, 0) << arguments;
        EXPECT_EQ(run.errors, "") << arguments;
        EXPECT_NE(run.output, "") << arguments;
    }
}

TEST(Program, ResultsThatCannotBeWrittenExitWithOne)
{
    const TemporaryFolder folder;
    const std::string errors = (folder / "err").string();
    for (const std::string arguments : {"--help", "formats", "inspect --quiet " SCENEPREP_EXAMPLES "/workshop.gltf"})
    {
        for (const std::string redirection : {">/dev/full", ">&-"})
        {
            const std::string command =
                SCENEPREP_PROGRAM " " + arguments + ' ' + redirection + " 2>" + errors + " </dev/null";
            const int status = std::system(command.c_str());
            EXPECT_EQ(WEXITSTATUS(status), 1) << command;
            EXPECT_THAT(ReadText(errors), testing::MatchesRegex("sceneprep: cannot write the results[^\n]+\n"));
        }
    }
}

TEST(Program, PrintsTheTree)
{
    const TemporaryFolder folder;
    const ProgramRun run = RunProgram("inspect --tree " + WriteSmallObj(folder).string());
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr("\n  Corner (1 surface)\n"));
}

TEST(Program, TheRecommendedStepsKeepTheAppearance)
{
    const TemporaryFolder folder;
    const std::string output = (folder / "all.glb").string();
    const ProgramRun run = RunProgram("prepare " + Workshop() + " --all --strict --quiet -o " + output);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.output, HasSubstr("The result matches the input.\n"));

    const auto surfaces = nlohmann::json::parse(RunProgram("inspect --json " + output).output)["surfaces"];
    std::size_t raised = 0;
    std::size_t named = 0;
    for (const auto& surface : surfaces)
    {
        raised += surface["collisionOffset"] > 0 ? 1 : 0;
        named += surface["name"].get<std::string>().find("\r\n") != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(raised, 0U);
    EXPECT_GT(named, 0U);
}

TEST(Program, SeveralInputsBecomeOneScene)
{
    const TemporaryFolder folder;
    const std::string small = WriteSmallObj(folder).string();
    const ProgramRun run = RunProgram("prepare " + small + ' ' + Workshop() + " -o " + (folder / "both.obj").string());
    EXPECT_EQ(run.status, 0) << run.errors;
    const ProgramRun inspection = RunProgram("inspect --json " + (folder / "both.obj").string());
    EXPECT_EQ(nlohmann::json::parse(inspection.output)["world"]["triangles"], 49818 + 3);
}

TEST(Program, KeepsGoingWithoutABrokenInput)
{
    const TemporaryFolder folder;
    const std::string small = WriteSmallObj(folder).string();
    const std::string broken = folder.Write("broken.glb", "no glTF at all").string();
    const std::string arguments = "prepare " + broken + ' ' + small + " -o " + (folder / "out.stl").string();
    EXPECT_EQ(RunProgram(arguments).status, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "out.stl"));
    const ProgramRun run = RunProgram(arguments + " --keep-going --quiet");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, testing::MatchesRegex("sceneprep: cannot read [^\n]+\n"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out.stl"));
}

#if !defined(IMPORTING_SANITIZE)
TEST(Program, ExceedingTheMemoryLimitIsAnErrorOfOneLine)
{
    const TemporaryFolder folder;
    const ProgramRun run =
        RunProgram("prepare " + Workshop() + " --quiet --memory-limit 0.01 -o " + (folder / "out.glb").string());
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, testing::MatchesRegex("sceneprep: [a-z]+ [^\n]+ needs more than 0.01 GiB; [^\n]+\n"));
    EXPECT_EQ(folder.CountEntries(), 0U);

    const ProgramRun going =
        RunProgram("prepare " + Workshop() + ' ' + Workshop() + " --keep-going --quiet --memory-limit 0.01 -o " +
                   (folder / "out.glb").string());
    EXPECT_EQ(going.status, 1);
    EXPECT_THAT(going.errors, testing::ContainsRegex("reading [^\n]+ needs more than 0.01 GiB; [^\n]+\n"));
}
#endif

}  // namespace
