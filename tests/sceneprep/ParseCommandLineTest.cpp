#include <sceneprep/ParseCommandLine.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>

namespace
{

using namespace Pipeline;
using namespace Sceneprep;
using testing::HasSubstr;

void ExpectUsageError(const std::vector<std::string>& words, const std::string& error)
{
    const ParsedCommandLine parsed = ParseCommandLine(words);
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.exitStatus, 2);
    EXPECT_EQ(parsed.output, "");
    EXPECT_EQ(parsed.error, error);
}

TEST(ParseCommandLine, ReadsTheSettingsOfFlattening)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "in.obj", "-o", "out.glb", "--flatten", "--min-surfaces", "5", "--max-vertices",
                          "65535", "--ignore-animation", "--plugin", "my.so"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, Command::Prepare);
    EXPECT_EQ(parsed.options->plugin, "my.so");
    const PrepareCommand& prepare = parsed.options->prepare;
    EXPECT_EQ(prepare.inputs, (std::vector<std::filesystem::path>{"in.obj"}));
    EXPECT_EQ(prepare.output, "out.glb");
    EXPECT_TRUE(prepare.steps.flatten);
    EXPECT_EQ(prepare.steps.minSurfaces, 5);
    EXPECT_EQ(prepare.steps.maxVertices, 65535);
    EXPECT_TRUE(prepare.steps.ignoreAnimation);
}

TEST(ParseCommandLine, HasDefaults)
{
    const ParsedCommandLine parsed = ParseCommandLine({"prepare", "-o", "out.GLTF", "in.obj"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_TRUE(parsed.options->plugin.empty());
    EXPECT_FALSE(parsed.options->prepare.steps.flatten);
    EXPECT_EQ(parsed.options->prepare.steps.minSurfaces, 2);
    EXPECT_EQ(parsed.options->prepare.steps.maxVertices, -1);
    EXPECT_FALSE(parsed.options->prepare.steps.ignoreAnimation);
}

TEST(ParseCommandLine, AcceptsNegativeNumbers)
{
    const ParsedCommandLine parsed = ParseCommandLine(
        {"prepare", "in.obj", "-o", "out.glb", "--flatten", "--max-vertices", "-1", "--min-surfaces", "-3"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.steps.maxVertices, -1);
    EXPECT_EQ(parsed.options->prepare.steps.minSurfaces, -3);
}

TEST(ParseCommandLine, ReadsEveryStep)
{
    const ParsedCommandLine parsed = ParseCommandLine(
        {"prepare", "a.obj", "b.obj", "-o", "out.glb", "--resolve-instances", "--repair-mirrors", "--check-orientation",
         "--fix-culling", "--weld", "--normals", "--unify-normals", "--uvs", "cubic", "--uvs", "planar-z:1:world",
         "--surface-names", "--unique-names", "--collision-offsets"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    const Pipeline::PrepareOptions& steps = parsed.options->prepare.steps;
    EXPECT_TRUE(steps.resolveInstances && steps.repairMirrors && steps.checkOrientation && steps.fixCulling);
    EXPECT_TRUE(steps.weld && steps.normals && steps.unifyNormals);
    EXPECT_TRUE(steps.surfaceNames && steps.uniqueNames && steps.collisionOffsets);
    EXPECT_FALSE(steps.flatten);
    EXPECT_EQ(steps.uvs, (std::vector<UVMapping>{{"cubic", 0, false}, {"planar-z", 1, true}}));
    EXPECT_EQ(parsed.options->prepare.inputs, (std::vector<std::filesystem::path>{"a.obj", "b.obj"}));
}

TEST(ParseCommandLine, AllRunsTheRecommendedStepsAndOthersCanBeAdded)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "a.obj", "-o", "out.glb", "--all", "--normals", "--max-vertices", "99"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    const Pipeline::PrepareOptions& steps = parsed.options->prepare.steps;
    EXPECT_TRUE(steps.repairMirrors && steps.weld && steps.flatten && steps.normals);
    EXPECT_FALSE(steps.checkOrientation || steps.fixCulling || steps.unifyNormals);
    EXPECT_EQ(steps.maxVertices, 99);
}

TEST(ParseCommandLine, StepsCanBeOmittedFromAll)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "a.obj", "-o", "out.glb", "--no-weld", "--all", "--no-surface-names"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    const Pipeline::PrepareOptions& steps = parsed.options->prepare.steps;
    EXPECT_TRUE(steps.repairMirrors && steps.uniqueNames && steps.flatten && steps.collisionOffsets);
    EXPECT_FALSE(steps.weld || steps.surfaceNames);
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--no-weld"},
                     "sceneprep: --no-weld requires --all; see 'sceneprep prepare --help'");
    ExpectUsageError(
        {"prepare", "in.obj", "-o", "out.glb", "--all", "--weld", "--no-weld"},
        "sceneprep: --weld and --no-weld contradict each other; use one of them; see 'sceneprep prepare --help'");
}

TEST(ParseCommandLine, ReadsNamesToKeepAndTheSizeOfCells)
{
    const ParsedCommandLine parsed = ParseCommandLine(
        {"prepare", "a.obj", "-o", "out.glb", "--flatten", "--keep", "Wheel*", "--keep", "Door ?", "--cell", "2.5"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.steps.keep, (std::vector<std::string>{"Wheel*", "Door ?"}));
    EXPECT_EQ(parsed.options->prepare.steps.cellSize, 2.5);
    for (const std::string size : {"0", "-1", "nan", "inf", "2m", ""})
        ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--flatten", "--cell", size},
                         "sceneprep: --cell: '" + size + "' is not a positive number; see 'sceneprep prepare --help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--weld", "--keep", "x"},
                     "sceneprep: --keep requires --flatten or --all; see 'sceneprep prepare --help'");
}

TEST(ParseCommandLine, ReadsVerificationAndReports)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "a.obj", "-o", "out.glb", "--strict", "--json", "report.json", "--report",
                          "report.html", "--keep-going", "--quiet", "--memory-limit", "1.5"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_TRUE(parsed.options->prepare.strict);
    EXPECT_TRUE(parsed.options->prepare.keepGoing);
    EXPECT_TRUE(parsed.options->quiet);
    EXPECT_EQ(parsed.options->prepare.jsonFile, "report.json");
    EXPECT_EQ(parsed.options->prepare.reportFile, "report.html");
    EXPECT_EQ(parsed.options->memoryLimit, 1.5);
}

TEST(ParseCommandLine, ABadMappingIsAUsageError)
{
    ExpectUsageError(
        {"prepare", "in.obj", "-o", "out.glb", "--uvs", "cubik"},
        "sceneprep: --uvs: 'cubik' is not a mapping; allowed are planar-x, planar-y, planar-z, cubic, "
        "cylindrical or spherical, optionally followed by :SET from 0 to 7, optionally followed by :world; "
        "see 'sceneprep prepare --help'");
}

TEST(ParseCommandLine, ContradictionsAreUsageErrors)
{
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--uvs", "cubic", "--uvs", "planar-x:0"},
                     "sceneprep: --uvs: set 0 is generated twice; give each mapping a set of its own; see 'sceneprep "
                     "prepare --help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--json", "./out.glb"},
                     "sceneprep: --json and --output name the same file; use different names; see 'sceneprep prepare "
                     "--help'");
    ExpectUsageError({"prepare", "a.obj", "in.obj", "-o", "out.glb", "--json", "./in.obj"},
                     "sceneprep: --json names the input 'in.obj'; use another name; see 'sceneprep prepare --help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--report", "in.obj"},
                     "sceneprep: --report names the input 'in.obj'; use another name; see 'sceneprep prepare --help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--report", "./r", "--json", "r"},
                     "sceneprep: --json and --report name the same file; use different names; see 'sceneprep prepare "
                     "--help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--weld", "--ignore-animation"},
                     "sceneprep: --ignore-animation requires --flatten or --all; see 'sceneprep prepare --help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--allow-loss", "cameras"},
                     "sceneprep: --allow-loss requires --strict; see 'sceneprep prepare --help'");
}

TEST(ParseCommandLine, InstancesAreKeptByStepsThatResolveThem)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "in.obj", "-o", "out.glb", "--all", "--keep-instances", "5", "--gpu-instancing"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.steps.keepInstances, 5);
    EXPECT_TRUE(parsed.options->prepare.gpuInstancing);
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--weld", "--keep-instances", "5"},
                     "sceneprep: --keep-instances requires --resolve-instances or --all; see 'sceneprep prepare "
                     "--help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.fbx", "--gpu-instancing"},
                     "sceneprep: --gpu-instancing requires the output to be a .gltf or .glb file; see 'sceneprep "
                     "prepare --help'");
}

TEST(ParseCommandLine, LossesAreAllowedByName)
{
    const ParsedCommandLine parsed = ParseCommandLine({"prepare", "in.obj", "-o", "out.glb", "--strict", "--allow-loss",
                                                       "cameras", "--allow-loss", "extension EXT_a"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.allowedLosses, (std::vector<std::string>{"cameras", "extension EXT_a"}));
}

TEST(ParseCommandLine, ASceneIsChosenFromGltfFilesOnly)
{
    const ParsedCommandLine parsed = ParseCommandLine({"prepare", "in.GLB", "-o", "out.obj", "--scene", "2"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.scene, "2");
    EXPECT_EQ(ParseCommandLine({"inspect", "in.gltf", "--scene", "Night"}).options->inspect.scene, "Night");
    EXPECT_FALSE(ParseCommandLine({"inspect", "in.gltf"}).options->inspect.scene);
    ExpectUsageError({"prepare", "a.gltf", "in.obj", "-o", "out.glb", "--scene", "2"},
                     "sceneprep: --scene requires glTF files, and 'in.obj' is none; see 'sceneprep prepare --help'");
    ExpectUsageError({"inspect", "in.obj", "--scene", "2"},
                     "sceneprep: --scene requires glTF files, and 'in.obj' is none; see 'sceneprep inspect --help'");
}

TEST(ParseCommandLine, TexturesMayStayExternal)
{
    EXPECT_TRUE(
        ParseCommandLine({"prepare", "a.obj", "-o", "b.glb", "--external-textures"}).options->prepare.externalTextures);
    EXPECT_FALSE(ParseCommandLine({"prepare", "a.obj", "-o", "b.glb"}).options->prepare.externalTextures);
}

TEST(ParseCommandLine, TwoNamesOfOneFileAreAUsageError)
{
    const SceneprepTests::TemporaryFolder folder;
    const std::filesystem::path input = folder.Write("in.obj", "");
    std::filesystem::create_symlink(input, folder / "report.json");
    ExpectUsageError(
        {"prepare", input.string(), "-o", "out.glb", "--json", (folder / "report.json").string()},
        "sceneprep: --json names the input '" + input.string() + "'; use another name; see 'sceneprep prepare --help'");
}

TEST(ParseCommandLine, MemoryIsAPositiveNumber)
{
    for (const char* text : {"0", "-1", "much", "1e9"})
        ExpectUsageError({"inspect", "in.obj", "--memory-limit", text},
                         std::string("sceneprep: --memory-limit: '") + text +
                             "' is not a positive number of GiB; see 'sceneprep inspect --help'");
}

TEST(ParseCommandLine, NoIsolationKeepsTheWorkInThisProcess)
{
    EXPECT_TRUE(ParseCommandLine({"inspect", "in.obj"}).options->isIsolated);
    EXPECT_FALSE(ParseCommandLine({"inspect", "in.obj", "--no-isolation"}).options->isIsolated);
    EXPECT_FALSE(ParseCommandLine({"prepare", "in.obj", "-o", "out.glb", "--no-isolation"}).options->isIsolated);
}

TEST(ParseCommandLine, Inspect)
{
    const ParsedCommandLine parsed = ParseCommandLine({"inspect", "in.obj", "--tree"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, Command::Inspect);
    EXPECT_EQ(parsed.options->inspect.input, "in.obj");
    EXPECT_FALSE(parsed.options->inspect.json);
    EXPECT_TRUE(parsed.options->inspect.tree);
}

TEST(ParseCommandLine, Formats)
{
    const ParsedCommandLine parsed = ParseCommandLine({"formats"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, Command::Formats);
}

TEST(ParseCommandLine, HelpAndVersionAreNotErrors)
{
    const ParsedCommandLine help = ParseCommandLine({"inspect", "--help"});
    EXPECT_FALSE(help.options);
    EXPECT_EQ(help.exitStatus, 0);
    EXPECT_THAT(help.output, HasSubstr("Usage: sceneprep inspect [OPTIONS] INPUT"));
    EXPECT_EQ(help.error, "");
    const ParsedCommandLine version = ParseCommandLine({"--version"});
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_THAT(version.output, testing::MatchesRegex("sceneprep [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(ParseCommandLine, AUsageErrorIsOneLineThatNamesTheHelp)
{
    ExpectUsageError({}, "sceneprep: A subcommand is required; see 'sceneprep --help'");
    ExpectUsageError({"prepare", "in.obj"}, "sceneprep: --output is required; see 'sceneprep prepare --help'");
    ExpectUsageError({"inspect"}, "sceneprep: INPUT is required; see 'sceneprep inspect --help'");
    ExpectUsageError({"prepare", "in.obj", "-o", "out.glb", "--min-surfaces", "2"},
                     "sceneprep: --min-surfaces requires --flatten or --all; see 'sceneprep prepare --help'");
}

TEST(ParseCommandLine, MisspelledNamesAreReportedWithTheNearestName)
{
    ExpectUsageError({"prepare", "in.obj", "--flattn", "-o", "out.glb"},
                     "sceneprep: unknown option '--flattn'; did you mean '--flatten'? See 'sceneprep prepare --help'");
    ExpectUsageError({"prepare", "in.obj", "--outptu=out.glb"},
                     "sceneprep: unknown option '--outptu'; did you mean '--output'? See 'sceneprep prepare --help'");
    ExpectUsageError({"preprae", "in.obj", "-o", "out.glb"},
                     "sceneprep: unknown command 'preprae'; did you mean 'prepare'? See 'sceneprep --help'");
    ExpectUsageError({"--verison"},
                     "sceneprep: unknown option '--verison'; did you mean '--version'? See 'sceneprep --help'");
}

TEST(ParseCommandLine, UnknownArgumentsWithoutASimilarNameAreReportedAlone)
{
    ExpectUsageError({"prepare", "in.obj", "--sort", "-o", "out.glb"},
                     "sceneprep: unknown option '--sort'; see 'sceneprep prepare --help'");
    ExpectUsageError({"bogus"}, "sceneprep: unknown command 'bogus'; see 'sceneprep --help'");
    ExpectUsageError({"print-doc", "man"}, "sceneprep: unknown command 'print-doc'; see 'sceneprep --help'");
    ExpectUsageError({"inspect", "a.obj", "b.obj"},
                     "sceneprep: unexpected argument 'b.obj'; see 'sceneprep inspect --help'");
}

TEST(ParseCommandLine, AnOutputReplacesAnInputOnRequestOnly)
{
    ExpectUsageError({"prepare", "a.glb", "b.glb", "-o", "./b.glb"},
                     "sceneprep: --output names the input 'b.glb'; use another name, or --in-place to replace the "
                     "input; see 'sceneprep prepare --help'");
    const ParsedCommandLine parsed = ParseCommandLine({"prepare", "a.glb", "-o", "a.glb", "--in-place"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.output, "a.glb");
}

TEST(ParseCommandLine, ReadsBudgets)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "a.glb", "-o", "b.glb", "--budget", "draws=5,bytes=2k", "--budget", "nodes=7"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.budget, (std::vector<BudgetLimit>{{"draws", 5}, {"bytes", 2000}, {"nodes", 7}}));
    EXPECT_EQ(ParseCommandLine({"inspect", "a.glb", "--budget=draws=5"}).options->inspect.budget.size(), 1U);
    ExpectUsageError({"inspect", "a.glb", "--budget", "calls=5"},
                     "sceneprep: --budget: 'calls' is not the name of a limit; allowed are draws, triangles, vertices, "
                     "nodes, materials, textures, bytes; see 'sceneprep inspect --help'");
}

TEST(ParseCommandLine, ADryRunNeedsNoOutput)
{
    const ParsedCommandLine parsed = ParseCommandLine({"prepare", "a/b.obj", "--dry-run", "--json", "-"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_TRUE(parsed.options->prepare.dryRun);
    EXPECT_EQ(parsed.options->prepare.output.filename(), "b.glb");
    EXPECT_TRUE(ParseCommandLine({"prepare", "a.glb", "--dry-run", "-o", "a.glb"}).options) << "nothing is replaced";
}

TEST(ParseCommandLine, BatchPassesTheOptionsOfPrepareOn)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"batch", "models", "-o", "out", "-j", "3", "--quiet", "--flatten", "--max-vertices", "-1",
                          "--uvs", "cubic", "--uvs", "planar-x:1", "--strict", "--allow-loss", "a b"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    const Batch::BatchCommand& batch = parsed.options->batch;
    EXPECT_EQ(batch.folder, "models");
    EXPECT_EQ(batch.output, "out");
    EXPECT_EQ(batch.jobs, 3);
    EXPECT_TRUE(batch.quiet);
    EXPECT_THAT(batch.arguments, testing::UnorderedElementsAre("--flatten", "--max-vertices=-1", "--uvs=cubic",
                                                               "--uvs=planar-x:1", "--strict", "--allow-loss=a b"));
    EXPECT_FALSE(parsed.options->isIsolated);
}

TEST(ParseCommandLine, BatchChecksTheOptionsOfPrepare)
{
    ExpectUsageError({"batch", "models", "-o", "out", "--max-vertices", "5"},
                     "sceneprep: --max-vertices requires --flatten or --all; see 'sceneprep batch --help'");
    ExpectUsageError({"batch", "models", "-o", "out", "--format", "obj"},
                     "sceneprep: --format: 'obj' is not a format; use glb or gltf; see 'sceneprep batch --help'");
    ExpectUsageError({"batch", "models", "-o", "./models"},
                     "sceneprep: --output names the folder of the models; use another folder; see 'sceneprep batch "
                     "--help'");
}

TEST(ParseCommandLine, AnUnsupportedExtensionIsAUsageError)
{
    ExpectUsageError(
        {"prepare", "in.obj", "-o", "out.zzz"},
        "sceneprep: --output: unsupported file extension '.zzz'; 'sceneprep formats' lists the supported ones; see "
        "'sceneprep prepare --help'");
}

TEST(ParseCommandLine, AnInvalidNumberIsAUsageError)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "in.obj", "-o", "out.glb", "--flatten", "--max-vertices", "many"});
    EXPECT_EQ(parsed.exitStatus, 2);
    EXPECT_THAT(parsed.error, HasSubstr("--max-vertices"));
}

}  // namespace
