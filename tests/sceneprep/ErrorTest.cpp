#include <sceneprep/Error.h>

#include <gtest/gtest.h>

namespace
{

TEST(OneLine, JoinsLinesAndRunsOfWhiteSpace)
{
    EXPECT_EQ(Sceneprep::OneLine("  one\r\n\ttwo   three\n"), "one two three");
}

TEST(OneLine, LeavesNothingOfWhiteSpaceAlone) { EXPECT_EQ(Sceneprep::OneLine(" \n "), ""); }

}  // namespace
