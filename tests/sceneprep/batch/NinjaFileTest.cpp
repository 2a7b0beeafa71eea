#include <sceneprep/batch/NinjaFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>
#include <sceneprep/run/Error.h>

namespace
{

using namespace Sceneprep;
using namespace Sceneprep::Batch;
using namespace SceneprepTests;
using testing::HasSubstr;

Edge EdgeOf(const std::filesystem::path& folder, const std::string& name)
{
    return {.name = name,
            .input = folder / (name + ".obj"),
            .output = folder / "out" / (name + ".glb"),
            .report = folder / "out/reports" / (name + ".glb.json"),
            .depfile = folder / "out/reports" / (name + ".glb.d"),
            .log = folder / "out/reports" / (name + ".glb.log"),
            .status = folder / "out/reports" / (name + ".glb.status")};
}

TEST(NinjaFile, QuotesWordsForTheShell)
{
    EXPECT_EQ(ShellWord("plain/word-1.glb"), "plain/word-1.glb");
    EXPECT_EQ(ShellWord(""), "''");
    EXPECT_EQ(ShellWord("a b"), "'a b'");
    EXPECT_EQ(ShellWord("it's $1"), "'it'\\''s $1'");
    EXPECT_EQ(ShellWord("*"), "'*'");
}

TEST(NinjaFile, HasACommandForEachModel)
{
    const NinjaSettings settings = {
        .program = "/bin/sceneprep", .arguments = {"--all", "--keep=a b"}, .folder = "/m/out"};
    EXPECT_EQ(CommandOf(EdgeOf("/m", "a"), settings),
              "rm -f /m/out/reports/a.glb.status; /bin/sceneprep prepare /m/a.obj -o /m/out/a.glb --quiet --json "
              "/m/out/reports/a.glb.json --depfile /m/out/reports/a.glb.d --all '--keep=a b' >/dev/null "
              "2>/m/out/reports/a.glb.log; s=$?; echo $s >/m/out/reports/a.glb.status; exit $s");
}

TEST(NinjaFile, NamesInputsOutputsAndDependencies)
{
    const NinjaSettings settings = {
        .program = "/bin/sceneprep", .dependencies = {"/lib/plug in.so"}, .arguments = {}, .folder = "/m/out"};
    const std::string text = NinjaText({EdgeOf("/m", "a"), EdgeOf("/m", "b")}, settings);
    EXPECT_THAT(text, HasSubstr("\nbuilddir = /m/out\n"));
    EXPECT_THAT(text, HasSubstr("\nbuild /m/out/a.glb | /m/out/reports/a.glb.json: prepare /m/a.obj | /bin/sceneprep "
                                "/lib/plug$ in.so\n"));
    EXPECT_THAT(text, HasSubstr("\n  dependencies = /m/out/reports/b.glb.d\n"));
    EXPECT_THAT(text, HasSubstr("; s=$$?; echo $$s >"));
}

TEST(NinjaFile, RefusesLineBreaks)
{
    const NinjaSettings settings = {.program = "/bin/sceneprep", .arguments = {}, .folder = "/m/out"};
    EXPECT_THROW(NinjaText({EdgeOf("/m", "a\nb")}, settings), ToolError);
}

/// Replaces sceneprep: writes its arguments, one a line, to the output, and the other files of an edge.
const char* const kFakeProgram = R"(#!/bin/sh
for word in "$@"; do echo "[$word]"; done >"$4"
echo '{}' >"$7"
: >"$9"
)";

TEST(NinjaFile, NinjaAndTheShellPassNamesUnchanged)
{
    const TemporaryFolder folder;
    const auto program = folder.Write("fake program", kFakeProgram);
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const std::string name = "a b$c:d'e\"f|g#h&i;j(k)*\\l%m";
    folder.Write(name + ".obj", "");
    const Edge edge = EdgeOf(folder.Path(), name);
    const NinjaSettings settings = {.program = program, .arguments = {"--x=$y 'z'"}, .folder = folder / "out"};
    folder.Write("build.ninja", NinjaText({edge}, settings));
    const std::string log = (folder / "log").string();
    const std::string command = "ninja -C " + folder.Path().string() + " >" + log + " 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << ReadText(log);
    EXPECT_EQ(ReadText(edge.output), "[prepare]\n[" + edge.input.string() + "]\n[-o]\n[" + edge.output.string() +
                                         "]\n[--quiet]\n[--json]\n[" + edge.report.string() + "]\n[--depfile]\n[" +
                                         edge.depfile.string() + "]\n[--x=$y 'z']\n");
    EXPECT_EQ(ReadText(edge.status), "0\n");
    ASSERT_EQ(std::system(command.c_str()), 0) << ReadText(log);
    EXPECT_THAT(ReadText(log), HasSubstr("no work to do"));
}

}  // namespace
