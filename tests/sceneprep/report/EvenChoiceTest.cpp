#include <sceneprep/report/EvenChoice.h>

#include <gtest/gtest.h>

#include <string>

namespace
{

using Sceneprep::Report::EvenChoice;

std::string Picks(std::size_t total, std::size_t limit)
{
    EvenChoice choice(total, limit);
    std::string picks;
    for (std::size_t i = 0; i < total; ++i)
        picks += choice.Next() ? 'x' : '-';
    return picks;
}

TEST(EvenChoice, PicksAllIfThereAreFew)
{
    EXPECT_EQ(Picks(3, 3), "xxx");
    EXPECT_EQ(Picks(3, 100), "xxx");
    EXPECT_EQ(Picks(0, 100), "");
}

TEST(EvenChoice, SpreadsItsPicks)
{
    EXPECT_EQ(Picks(8, 4), "-x-x-x-x");
    EXPECT_EQ(Picks(7, 3), "--x-x-x");
    EXPECT_EQ(Picks(5, 4), "-xxxx");
    EXPECT_EQ(Picks(4, 0), "----");
}

}  // namespace
