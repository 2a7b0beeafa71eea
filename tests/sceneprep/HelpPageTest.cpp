#include <gtest/gtest.h>
#include <sceneprep/TestFiles.h>

// The documentation, the manual page and the completions are generated: scripts/update-docs writes them.

namespace
{

using namespace SceneprepTests;

constexpr const char* kHint = "is not up to date; run scripts/update-docs";

void ExpectHelpInPage(const std::string& arguments)
{
    const std::string block = "```\n$ sceneprep " + arguments + '\n' + RunProgram(arguments).output + "```\n";
    EXPECT_NE(ReadText(SCENEPREP_PAGE).find(block), std::string::npos) << "docs/sceneprep.md " << kHint;
}

TEST(HelpPage, ShowsEveryHelpText)
{
    ExpectHelpInPage("--help");
    ExpectHelpInPage("prepare --help");
    ExpectHelpInPage("inspect --help");
    ExpectHelpInPage("batch --help");
    ExpectHelpInPage("formats --help");
}

TEST(HelpPage, HasTheTablesOfStepsAndFormats)
{
    for (const std::string name : {"steps", "formats"})
    {
        const std::string block =
            "<!-- sceneprep print-docs " + name + " -->\n" + RunProgram("print-docs " + name).output + "<!-- end -->\n";
        EXPECT_NE(ReadText(SCENEPREP_PAGE).find(block), std::string::npos) << "docs/sceneprep.md " << kHint;
    }
}

TEST(HelpPage, PackagedFilesAreAsGenerated)
{
    const std::filesystem::path packaging = SCENEPREP_PACKAGING;
    EXPECT_EQ(ReadText(packaging / "sceneprep.1"), RunProgram("print-docs man").output) << kHint;
    EXPECT_EQ(ReadText(packaging / "sceneprep.bash"), RunProgram("print-docs bash").output) << kHint;
    EXPECT_EQ(ReadText(packaging / "_sceneprep"), RunProgram("print-docs zsh").output) << kHint;
    EXPECT_EQ(ReadText(packaging / "sceneprep.fish"), RunProgram("print-docs fish").output) << kHint;
}

}  // namespace
