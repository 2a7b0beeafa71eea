#include <sceneprep/run/Error.h>

#include <gtest/gtest.h>

namespace
{

TEST(OneLine, JoinsLinesAndRunsOfWhiteSpace)
{
    EXPECT_EQ(Sceneprep::OneLine("  one\r\n\ttwo   three\n"), "one two three");
}

TEST(OneLine, WhiteSpaceAloneBecomesEmpty) { EXPECT_EQ(Sceneprep::OneLine(" \n "), ""); }

TEST(ErrorLine, HasNoBreaksWithin)
{
    EXPECT_EQ(Sceneprep::ErrorLine("cannot read a\r\nb  c.obj; check it"),
              "sceneprep: cannot read a  b  c.obj; check it\n");
}

}  // namespace
