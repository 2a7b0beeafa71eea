#include <sceneprep/batch/RunBatch.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <nlohmann/json.hpp>

// The program prepares folders with it, as users do.

namespace
{

using namespace SceneprepTests;
using testing::HasSubstr;

class RunBatchTest : public testing::Test
{
protected:
    RunBatchTest()
    {
        std::filesystem::create_directories(models_ / "sub dir");
        for (const char* name : {"workshop.gltf", "workshop.bin"})
            std::filesystem::copy_file(std::filesystem::path(SCENEPREP_EXAMPLES) / name, models_ / name);
        WriteModel("sub dir/it's $1.obj");
    }

    void WriteModel(const std::string& name) const
    {
        folder_.Write("models/" + name, "v 0 0 0\nv 1 0 0\nv 0 1 0\no A\nf 1 2 3\n");
    }

    ProgramRun Run(const std::string& options) const
    {
        return RunProgram("batch " + models_.string() + " -o " + out_.string() + " -j 2 " + options);
    }

    /// Returns how many models Ninja prepared.
    static std::string WorkOf(const ProgramRun& run)
    {
        const std::size_t end = run.errors.rfind(']');
        return end == std::string::npos ? "none" : run.errors.substr(run.errors.rfind('[', end), end + 1);
    }

    TemporaryFolder folder_;
    std::filesystem::path models_ = folder_ / "models";
    std::filesystem::path out_ = folder_ / "out";
};

TEST_F(RunBatchTest, PreparesEveryModelBelowTheFolder)
{
    const ProgramRun run = Run("--all");
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
    EXPECT_THAT(run.output, HasSubstr("2 of 2 models prepared\n"));
    EXPECT_EQ(ReadText(out_ / "workshop.glb").substr(0, 4), "glTF");
    EXPECT_EQ(ReadText(out_ / "sub dir/it's $1.glb").substr(0, 4), "glTF");
    const auto index = nlohmann::json::parse(ReadText(out_ / "index.json"));
    EXPECT_EQ(index["failed"], 0);
    EXPECT_EQ(index["models"][1]["model"], "workshop.gltf");
    EXPECT_EQ(index["models"][1]["report"]["before"]["drawCalls"], 1494);
    EXPECT_EQ(index["models"][1]["bytes"], std::filesystem::file_size(out_ / "workshop.glb"));
}

TEST_F(RunBatchTest, PreparesWhatHasChangedOnly)
{
    EXPECT_EQ(Run("").status, 0);
    EXPECT_THAT(Run("").errors, HasSubstr("no work to do"));

    folder_.Write("models/workshop.bin", ReadText(models_ / "workshop.bin"));  // a buffer of one model
    const ProgramRun buffer = Run("");
    EXPECT_THAT(buffer.errors, HasSubstr("[1/1] workshop.gltf"));
    EXPECT_EQ(buffer.status, 0);

    EXPECT_THAT(Run("--weld").errors, HasSubstr("[2/2]")) << "other options prepare every model";
    WriteModel("new.obj");
    EXPECT_THAT(Run("--weld").errors, HasSubstr("[1/1] new.obj"));
}

TEST_F(RunBatchTest, AFailureDoesNotStopTheOthers)
{
    folder_.Write("models/broken.glb", "glTF\2");
    const ProgramRun run = Run("");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, HasSubstr("2 of 3 models prepared\n"));
    EXPECT_THAT(run.output, HasSubstr("broken.glb: the file is truncated (12 bytes expected, 5 found)\n"));
    const auto index = nlohmann::json::parse(ReadText(out_ / "index.json"));
    EXPECT_EQ(index["models"][0]["status"], "failed");
    EXPECT_EQ(index["models"][1]["status"], "done");
}

TEST_F(RunBatchTest, ReportsModelsOverBudget)
{
    const ProgramRun run = Run("--budget triangles=100");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, HasSubstr("workshop.gltf        over budget"));
    EXPECT_THAT(run.output, HasSubstr("1 of 2 models prepared\n"));
}

TEST_F(RunBatchTest, EqualNamesHaveDistinctOutputs)
{
    WriteModel("workshop.obj");
    EXPECT_EQ(Run("--format gltf").status, 0);
    EXPECT_TRUE(std::filesystem::exists(out_ / "workshop.gltf.gltf"));
    EXPECT_TRUE(std::filesystem::exists(out_ / "workshop.obj.gltf"));
}

TEST_F(RunBatchTest, PrintsTheNinjaFileWithoutRunningIt)
{
    const ProgramRun run = Run("--print --weld");
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.output, HasSubstr("rule prepare\n"));
    EXPECT_THAT(run.output, HasSubstr(" --weld "));
    EXPECT_FALSE(std::filesystem::exists(out_));
    EXPECT_EQ(Run("--weld --quiet").status, 0);
    EXPECT_EQ(ReadText(out_ / "build.ninja"), run.output);
}

TEST_F(RunBatchTest, CollectsTheResultsOfCommandsThatWereRunWithoutNinja)
{
    const ProgramRun before = Run("--collect");
    EXPECT_EQ(before.status, 1);
    EXPECT_THAT(before.output, HasSubstr("0 of 2 models prepared\n"));
    folder_.Write("build.ninja", Run("--print").output);
    const std::string commands = "ninja -C " + folder_.Path().string() +
                                 " -t commands | while read -r line; do sh -c "
                                 "\"$line\" || exit 1; done";
    EXPECT_EQ(std::system(commands.c_str()), 0);
    const ProgramRun after = Run("--collect");
    EXPECT_EQ(after.status, 0);
    EXPECT_THAT(after.output, HasSubstr("2 of 2 models prepared\n"));
}

TEST_F(RunBatchTest, WithoutNinjaThePackageIsNamed)
{
    const std::string errors = (folder_ / "errors").string();
    const std::string command =
        "PATH=/nowhere " SCENEPREP_PROGRAM " batch " + models_.string() + " -o " + out_.string() + " 2>" + errors;
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_EQ(ReadText(errors),
              "sceneprep: cannot run ninja: it is not installed; install Debian's package ninja-build\n");
}

TEST_F(RunBatchTest, AFolderWithoutModelsIsAnError)
{
    std::filesystem::create_directory(folder_ / "empty");
    const ProgramRun empty = RunProgram("batch " + (folder_ / "empty").string() + " -o " + out_.string());
    EXPECT_EQ(empty.status, 1);
    EXPECT_THAT(empty.errors, HasSubstr("there are no model files below "));
}

}  // namespace
