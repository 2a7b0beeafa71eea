#include <sceneprep/Options.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace Sceneprep;
using testing::HasSubstr;

void ExpectBadUsage(const std::vector<std::string>& words, const std::string& error)
{
    const ParsedCommandLine parsed = ParseCommandLine(words);
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.exitStatus, 2);
    EXPECT_EQ(parsed.output, "");
    EXPECT_EQ(parsed.error, error);
}

TEST(Options, PrepareWithEverything)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "in.obj", "-o", "out.glb", "--flatten", "--min-surfaces", "5", "--max-vertices",
                          "65535", "--ignore-animation", "--plugin", "my.so"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, Command::Prepare);
    EXPECT_EQ(parsed.options->plugin, "my.so");
    const PrepareOptions& prepare = parsed.options->prepare;
    EXPECT_EQ(prepare.input, "in.obj");
    EXPECT_EQ(prepare.output, "out.glb");
    EXPECT_TRUE(prepare.flatten);
    EXPECT_EQ(prepare.minSurfaces, 5);
    EXPECT_EQ(prepare.maxVertices, 65535);
    EXPECT_TRUE(prepare.ignoreAnimation);
}

TEST(Options, PrepareWithTheLeast)
{
    const ParsedCommandLine parsed = ParseCommandLine({"prepare", "-o", "out.GLTF", "in.obj"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_TRUE(parsed.options->plugin.empty());
    EXPECT_FALSE(parsed.options->prepare.flatten);
    EXPECT_EQ(parsed.options->prepare.minSurfaces, 2);
    EXPECT_EQ(parsed.options->prepare.maxVertices, -1);
    EXPECT_FALSE(parsed.options->prepare.ignoreAnimation);
}

TEST(Options, NegativeNumbersAreNumbers)
{
    const ParsedCommandLine parsed = ParseCommandLine(
        {"prepare", "in.obj", "-o", "out.glb", "--flatten", "--max-vertices", "-1", "--min-surfaces", "-3"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->prepare.maxVertices, -1);
    EXPECT_EQ(parsed.options->prepare.minSurfaces, -3);
}

TEST(Options, Inspect)
{
    const ParsedCommandLine parsed = ParseCommandLine({"inspect", "in.obj", "--tree"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, Command::Inspect);
    EXPECT_EQ(parsed.options->inspect.input, "in.obj");
    EXPECT_FALSE(parsed.options->inspect.json);
    EXPECT_TRUE(parsed.options->inspect.tree);
}

TEST(Options, Formats)
{
    const ParsedCommandLine parsed = ParseCommandLine({"formats"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->command, Command::Formats);
}

TEST(Options, HelpAndVersionAreNoErrors)
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

TEST(Options, BadUsageIsOneLineThatSaysWhereToLook)
{
    ExpectBadUsage({}, "sceneprep: A subcommand is required; see 'sceneprep --help'");
    ExpectBadUsage({"prepare", "in.obj"}, "sceneprep: --output is required; see 'sceneprep prepare --help'");
    ExpectBadUsage({"inspect"}, "sceneprep: INPUT is required; see 'sceneprep inspect --help'");
    ExpectBadUsage({"prepare", "in.obj", "-o", "out.glb", "--min-surfaces", "2"},
                   "sceneprep: --min-surfaces requires --flatten; see 'sceneprep prepare --help'");
}

TEST(Options, AnOutputOfUnknownEndingIsBadUsage)
{
    ExpectBadUsage(
        {"prepare", "in.obj", "-o", "out.zzz"},
        "sceneprep: --output: cannot tell a format to write from the name out.zzz; 'sceneprep formats' lists "
        "the endings; see 'sceneprep prepare --help'");
}

TEST(Options, WhatIsNoNumberIsBadUsage)
{
    const ParsedCommandLine parsed =
        ParseCommandLine({"prepare", "in.obj", "-o", "out.glb", "--flatten", "--max-vertices", "many"});
    EXPECT_EQ(parsed.exitStatus, 2);
    EXPECT_THAT(parsed.error, HasSubstr("--max-vertices"));
}

}  // namespace
