#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>

#include <algorithm>
#include <regex>
#include <set>

// The manual page shows the help texts as the program prints them.

namespace
{

using namespace SceneprepTests;

void ExpectOnPage(const std::string& arguments)
{
    const ProgramRun run = RunProgram(arguments);
    const std::string block = "```\n$ sceneprep " + arguments + '\n' + run.output + "```\n";
    EXPECT_NE(ReadText(SCENEPREP_PAGE).find(block), std::string::npos) << "docs/sceneprep.md lacks\n" << block;
}

TEST(HelpPage, ShowsEveryHelpText)
{
    ExpectOnPage("--help");
    ExpectOnPage("prepare --help");
    ExpectOnPage("inspect --help");
    ExpectOnPage("formats --help");
}

std::set<std::string> OptionsIn(const std::string& text)
{
    static const std::regex kOption("--[a-z]+(-[a-z]+)*");
    return {std::sregex_token_iterator(text.begin(), text.end(), kOption), {}};
}

std::string WithoutEscapes(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '\\'), text.end());
    return text;
}

TEST(HelpPage, TheManualPageAndTheCompletionsKnowEveryOption)
{
    std::set<std::string> options = OptionsIn(RunProgram("--help").output);
    options.merge(OptionsIn(RunProgram("prepare --help").output));
    options.merge(OptionsIn(RunProgram("inspect --help").output));
    EXPECT_GT(options.size(), 25U);
    const std::filesystem::path packaging = SCENEPREP_PACKAGING;
    EXPECT_EQ(OptionsIn(WithoutEscapes(ReadText(packaging / "sceneprep.1"))), options);
    EXPECT_EQ(OptionsIn(ReadText(packaging / "sceneprep.bash")), options);
    EXPECT_EQ(OptionsIn(ReadText(packaging / "_sceneprep")), options);
    const std::string fish = ReadText(packaging / "sceneprep.fish");
    for (const std::string& option : options)
        EXPECT_NE(fish.find("-l " + option.substr(2) + ' '), std::string::npos) << option;
}

}  // namespace
