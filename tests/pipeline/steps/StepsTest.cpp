#include <pipeline/steps/Steps.h>

#include <gtest/gtest.h>
#include <pipeline/steps/UVMapping.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace Pipeline;

const Step* FindStep(const std::string& option)
{
    for (const Step& step : Steps())
    {
        if (step.option == option)
            return &step;
    }
    return nullptr;
}

TEST(Steps, HaveUniqueOptionsAndTitles)
{
    std::set<std::string> options;
    std::set<std::string> titles;
    for (const Step& step : Steps())
    {
        EXPECT_TRUE(titles.insert(step.title).second) << step.title;
        if (std::string(step.option).empty())
            continue;
        EXPECT_TRUE(options.insert(step.option).second) << step.option;
        EXPECT_EQ(std::string(step.option).rfind("--", 0), 0U) << step.option;
        EXPECT_FALSE(std::string(step.help).empty()) << step.option;
    }
}

TEST(Steps, AreChosenByTheirFlagOrTheirValue)
{
    for (const Step& step : Steps())
    {
        SCOPED_TRACE(step.title);
        PrepareOptions options;
        EXPECT_FALSE(step.isChosen(options));
        ASSERT_NE(step.flag == nullptr, step.setValue == nullptr);
        EXPECT_EQ(std::string(step.value).empty(), step.setValue == nullptr);
        if (step.flag != nullptr)
            options.*step.flag = true;
        else
            EXPECT_EQ(step.setValue(options, "cubic"), "");
        EXPECT_TRUE(step.isChosen(options));
    }
}

TEST(Steps, RecommendedOnesAreFlags)
{
    std::vector<std::string> recommended;
    for (const Step& step : Steps())
    {
        if (step.isRecommended)
        {
            EXPECT_NE(step.flag, nullptr);
            recommended.emplace_back(step.option);
        }
    }
    EXPECT_EQ(recommended, (std::vector<std::string>{"--repair-mirrors", "--weld", "--unique-names", "--flatten",
                                                     "--surface-names", "--collision-offsets"}));
}

TEST(Steps, HelpForMappingsNamesEveryProjection)
{
    const auto all = Steps();
    const auto uvs =
        std::find_if(all.begin(), all.end(), [](const Step& step) { return std::string_view(step.option) == "--uvs"; });
    ASSERT_NE(uvs, all.end());
    EXPECT_NE(std::string_view(uvs->help).find("MAPPING is " + UVProjectionNames() + ";"), std::string_view::npos);
}

TEST(Steps, SettingsBelongToSteps)
{
    for (const StepSetting& setting : StepSettings())
    {
        EXPECT_NE(FindStep(setting.step), nullptr) << setting.option;
        const int members = (setting.flag != nullptr) + (setting.number != nullptr) + (setting.size != nullptr) +
                            (setting.names != nullptr);
        EXPECT_EQ(members, 1) << setting.option;
        EXPECT_EQ(std::string(setting.value).empty(), setting.flag != nullptr) << setting.option;
    }
}

}  // namespace
