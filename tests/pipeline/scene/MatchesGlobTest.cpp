#include <pipeline/scene/MatchesGlob.h>

#include <gtest/gtest.h>

#include <string>

namespace
{

using Pipeline::MatchesGlob;

TEST(MatchesGlob, ComparesOrdinaryCharactersWithCase)
{
    EXPECT_TRUE(MatchesGlob("Wheel", "Wheel"));
    EXPECT_FALSE(MatchesGlob("wheel", "Wheel"));
    EXPECT_FALSE(MatchesGlob("Wheels", "Wheel"));
    EXPECT_FALSE(MatchesGlob("Whee", "Wheel"));
    EXPECT_TRUE(MatchesGlob("", ""));
    EXPECT_FALSE(MatchesGlob("a", ""));
    EXPECT_TRUE(MatchesGlob("[a-z]", "[a-z]"));
}

TEST(MatchesGlob, AStarStandsForAnyCharacters)
{
    for (const std::string pattern : {"*", "Wheel*", "*left", "W*l*t", "**Wheel_left**", "*e*e*e*", "Wheel_left*"})
        EXPECT_TRUE(MatchesGlob("Wheel_left", pattern)) << pattern;
    for (const std::string pattern : {"*right", "Wheel*x", "W*x*t", "*e*e*e*e*", "heel*"})
        EXPECT_FALSE(MatchesGlob("Wheel_left", pattern)) << pattern;
    EXPECT_TRUE(MatchesGlob("", "*"));
    EXPECT_TRUE(MatchesGlob("aab", "*ab"));
}

TEST(MatchesGlob, AQuestionMarkStandsForOneCharacter)
{
    EXPECT_TRUE(MatchesGlob("Wheel1", "Wheel?"));
    EXPECT_FALSE(MatchesGlob("Wheel", "Wheel?"));
    EXPECT_FALSE(MatchesGlob("Wheel12", "Wheel?"));
    EXPECT_TRUE(MatchesGlob("T\xC3\xBCr", "T?r"));
    EXPECT_TRUE(MatchesGlob("T\xC3\xBCr", "T*?"));
    EXPECT_TRUE(MatchesGlob("aXbXc", "*?c"));
}

TEST(MatchesGlob, ManyStarsTakeLittleTime)
{
    EXPECT_FALSE(MatchesGlob(std::string(2000, 'a'), "*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

}  // namespace
