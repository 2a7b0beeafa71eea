#include <sceneprep/Manual.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/steps/Steps.h>
#include <sceneprep/run/Error.h>

namespace
{

using namespace Sceneprep;
using testing::HasSubstr;

TEST(Manual, NamesTheOptionOfEveryStepInEveryText)
{
    for (const char* name : {"bash", "zsh", "fish", "man", "steps"})
    {
        const std::string text = ManualText(name);
        for (const Pipeline::Step& step : Pipeline::Steps())
        {
            std::string option = std::string(step.option).substr(*step.option == '\0' ? 0 : 2);
            for (std::size_t at = option.find('-'); name == std::string("man") && at != std::string::npos;
                 at = option.find('-', at + 2))
                option.insert(at, "\\");
            EXPECT_THAT(text, HasSubstr(option)) << name;
        }
    }
}

TEST(Manual, ManPageEscapesHyphens)
{
    EXPECT_THAT(ManualText("man"), HasSubstr("\\fB\\-o, \\-\\-output\\fR \\fIOUTPUT\\fR\n"));
    EXPECT_THAT(ManualText("man"), HasSubstr("\nSteps, which run in this order:\n"));
}

TEST(Manual, CompletionsOfferMappings)
{
    EXPECT_THAT(ManualText("bash"), HasSubstr("compgen -W \"planar-x planar-y planar-z cubic cylindrical spherical\""));
    EXPECT_THAT(ManualText("fish"), HasSubstr(" -l uvs -x -a \"planar-x "));
    EXPECT_THAT(ManualText("zsh"), HasSubstr(":value:(planar-x "));
}

TEST(Manual, CompletionsOfferFilesForFileOptions)
{
    EXPECT_THAT(ManualText("fish"), HasSubstr(" -s o -l output -r -d "));
    EXPECT_THAT(ManualText("zsh"), HasSubstr("'(-o --output)'{-o,--output}'[Output file, required except for "
                                             "--dry-run; the extension selects the format]"
                                             ":file:_files'"));
}

TEST(Manual, StepsAreATableInTheirOrder)
{
    const std::string table = ManualText("steps");
    EXPECT_LT(table.find("*Weld* | `--weld` | Weld equal vertices"), table.find("*Flatten* | `--flatten` |"));
}

TEST(Manual, UnknownTextsAreAnError) { EXPECT_THROW(ManualText("html"), ToolError); }

}  // namespace
