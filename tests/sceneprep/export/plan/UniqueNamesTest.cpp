#include <sceneprep/export/plan/UniqueNames.h>

#include <gtest/gtest.h>

namespace
{

using Sceneprep::UniqueNames;

TEST(UniqueNames, AFreeNameIsKept)
{
    UniqueNames names;
    EXPECT_EQ(names.Make("a", "node"), "a");
    EXPECT_EQ(names.Uses("a"), 1U);
}

TEST(UniqueNames, ATakenNameGetsTheNextFreeNumber)
{
    UniqueNames names;
    names.Count("a");
    names.Count("a_2");
    EXPECT_EQ(names.Make("a", "node"), "a_3");
    EXPECT_EQ(names.Make("a", "node"), "a_4");
    EXPECT_EQ(names.Make("a_2", "node"), "a_2_2");
}

TEST(UniqueNames, AnEmptyNameIsReplaced)
{
    UniqueNames names;
    EXPECT_EQ(names.Make("", "node"), "node");
    EXPECT_EQ(names.Make("", "node"), "node_2");
}

TEST(UniqueNames, ManyEqualNamesTakeLinearTime)
{
    UniqueNames names;
    for (int i = 1; i < 200000; ++i)
        names.Make("a", "node");
    EXPECT_EQ(names.Make("a", "node"), "a_200000");
}

}  // namespace
