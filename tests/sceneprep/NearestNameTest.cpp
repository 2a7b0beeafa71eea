#include <sceneprep/NearestName.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::NearestName;

const std::vector<std::string> kNames = {"--flatten", "--weld", "--json", "--report"};

TEST(NearestName, FindsOneEdit)
{
    EXPECT_EQ(NearestName("--flattn", kNames), "--flatten");
    EXPECT_EQ(NearestName("--flattten", kNames), "--flatten");
    EXPECT_EQ(NearestName("--flaiten", kNames), "--flatten");
    EXPECT_EQ(NearestName("--wedl", kNames), "--weld");
    EXPECT_EQ(NearestName("--weld", kNames), "--weld");
}

TEST(NearestName, TakesTheNearestAndTheFirstOfEquals)
{
    EXPECT_EQ(NearestName("abd", {"abcde", "abc", "abe"}), "abc");
    EXPECT_EQ(NearestName("abcdefg", {"abcdexy", "abcdefx"}), "abcdefx");
}

TEST(NearestName, FindsNoneIfMoreThanAThirdDiffers)
{
    EXPECT_EQ(NearestName("--fltn", kNames), "");
    EXPECT_EQ(NearestName("--textures", kNames), "");
    EXPECT_EQ(NearestName("", kNames), "");
    EXPECT_EQ(NearestName("--flatten", {}), "");
}

}  // namespace
