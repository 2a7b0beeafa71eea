#include <importing/plugin/Disambiguate.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Importing::FindRenamings;
using Importing::Renaming;

using Names = std::vector<std::string>;

Names Renamed(Names names)
{
    for (const Renaming& renaming : FindRenamings(names))
        names.at(renaming.index) = renaming.name;
    return names;
}

TEST(Disambiguate, NoNamesAndDifferentNamesNeedNoRenaming)
{
    EXPECT_TRUE(FindRenamings({}).empty());
    EXPECT_TRUE(FindRenamings({"A", "B", "A(1)", ""}).empty());
}

TEST(Disambiguate, EqualNamesCountDownAndTheLastIsKept)
{
    EXPECT_EQ(Renamed({"A", "A", "A", "A"}), (Names{"A(3)", "A(2)", "A(1)", "A"}));
}

TEST(Disambiguate, RenamingsComeInIndexOrder)
{
    const std::vector<Renaming> renamings = FindRenamings({"x", "B", "A", "B", "A", "A"});
    ASSERT_EQ(renamings.size(), 3U);
    EXPECT_EQ(renamings[0].index, 1U);
    EXPECT_EQ(renamings[0].name, "B(1)");
    EXPECT_EQ(renamings[1].index, 2U);
    EXPECT_EQ(renamings[1].name, "A(2)");
    EXPECT_EQ(renamings[2].index, 4U);
    EXPECT_EQ(renamings[2].name, "A(1)");
}

TEST(Disambiguate, ANameOfAnotherRecordIsAvoidedByABracket)
{
    EXPECT_EQ(Renamed({"A", "A", "A(1)"}), (Names{"A(1)[1]", "A", "A(1)"}));
    EXPECT_EQ(Renamed({"A(1)", "A", "A"}), (Names{"A(1)", "A(1)[1]", "A"}));
}

TEST(Disambiguate, BracketsAreTriedInOrderAndNeverNested)
{
    EXPECT_EQ(Renamed({"A", "A", "A(1)", "A(1)[1]", "A(1)[2]"}), (Names{"A(1)[3]", "A", "A(1)", "A(1)[1]", "A(1)[2]"}));
}

TEST(Disambiguate, ANameIsAvoidedAlsoWhereItsRecordsAreRenamedThemselves)
{
    EXPECT_EQ(Renamed({"A(1)", "A(1)", "A", "A"}), (Names{"A(1)(1)", "A(1)", "A(1)[1]", "A"}));
}

TEST(Disambiguate, EmptyNamesAreRenamedLikeOthers) { EXPECT_EQ(Renamed({"", ""}), (Names{"(1)", ""})); }

TEST(Disambiguate, NamesThatDifferInCaseAreDifferent) { EXPECT_TRUE(FindRenamings({"box", "Box", "BOX"}).empty()); }

TEST(Disambiguate, NamesMayContainAnyByte)
{
    const std::string odd("a\0b", 3);
    EXPECT_EQ(Renamed({odd, odd, "a"}), (Names{odd + "(1)", odd, "a"}));
}

TEST(Disambiguate, NumbersHaveNoPadding)
{
    Names names(12, "A");
    names = Renamed(names);
    EXPECT_EQ(names[0], "A(11)");
    EXPECT_EQ(names[1], "A(10)");
    EXPECT_EQ(names[2], "A(9)");
    EXPECT_EQ(names[11], "A");
}

TEST(Disambiguate, AHundredThousandEqualNamesWithBracketedOnesAreNotQuadratic)
{
    constexpr int kCount = 100000;
    Names names(kCount, "A");
    for (int i = 1; i < kCount; i += 2)
    {
        names.push_back("A(" + std::to_string(i) + ")");
        names.push_back("A(" + std::to_string(i) + ")[1]");
    }
    for (int i = 1; i < kCount; ++i)
        names.push_back("A(99999)[" + std::to_string(i + 1) + "]");
    const Names renamed = Renamed(names);
    EXPECT_EQ(renamed[0], "A(99999)[100001]");
    EXPECT_EQ(renamed[1], "A(99998)");
    EXPECT_EQ(renamed[2], "A(99997)[2]");
    EXPECT_EQ(renamed[kCount - 1], "A");
}

}  // namespace
