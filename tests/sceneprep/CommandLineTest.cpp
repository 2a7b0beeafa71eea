#include <sceneprep/CommandLine.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pipeline/steps/Steps.h>

#include <set>

namespace
{

using namespace Sceneprep;
using testing::HasSubstr;

TEST(CommandLine, HasAnOptionForEveryStepAndSetting)
{
    Options options;
    const std::unique_ptr<CLI::App> app = DescribeCommandLine(options);
    const CLI::App& prepare = *app->get_subcommand("prepare");
    for (const Pipeline::Step& step : Pipeline::Steps())
    {
        if (*step.option == '\0')
            continue;
        EXPECT_EQ(prepare.get_option(step.option)->get_group(), kStepGroup);
    }
    for (const Pipeline::StepSetting& setting : Pipeline::StepSettings())
        EXPECT_EQ(prepare.get_option(setting.option)->get_group(), kStepGroup);
}

TEST(CommandLine, ListsTheRecommendedStepsInTheHelp)
{
    Options options;
    const std::unique_ptr<CLI::App> app = DescribeCommandLine(options);
    EXPECT_EQ(app->get_subcommand("prepare")->get_option("--all")->get_description(),
              "Run the recommended steps: --repair-mirrors --weld --unique-names --flatten --surface-names "
              "--collision-offsets; --no-STEP omits one, as --no-weld");
}

TEST(CommandLine, HidesTheCommandForGeneratedTexts)
{
    Options options;
    const std::unique_ptr<CLI::App> app = DescribeCommandLine(options);
    EXPECT_THAT(app->help(), HasSubstr("inspect"));
    EXPECT_THAT(app->help(), testing::Not(HasSubstr("print-docs")));
}

}  // namespace
