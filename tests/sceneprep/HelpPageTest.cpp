#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>

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

}  // namespace
