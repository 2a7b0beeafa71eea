#include <importing/base/CheckedAccess.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace
{

using namespace Importing;

template <typename Action>
std::string TextOfBadSubscript(Action action)
{
    try
    {
        action();
    }
    catch (const std::out_of_range& error)
    {
        return error.what();
    }
    return "nothing thrown";
}

constexpr const char* kText = "invalid vector<T> subscript";

TEST(CheckedAccess, BadIndexThrowsTheDocumentedText) { EXPECT_EQ(TextOfBadSubscript(ThrowBadSubscript), kText); }

TEST(CheckedAccess, IndexIsValidBelowTheCount)
{
    EXPECT_TRUE(IsValidIndex(0, 3));
    EXPECT_TRUE(IsValidIndex(2U, 3));
    EXPECT_FALSE(IsValidIndex(3, 3));
    EXPECT_FALSE(IsValidIndex(0, 0));
}

TEST(CheckedAccess, NegativeIndexIsNeverValid)
{
    EXPECT_FALSE(IsValidIndex(-1, 3));
    EXPECT_FALSE(IsValidIndex(std::numeric_limits<std::int32_t>::min(), 3));
    EXPECT_FALSE(IsValidIndex(-1, std::numeric_limits<std::size_t>::max()));
}

TEST(CheckedAccess, LargeUnsignedIndexIsNotTruncated)
{
    EXPECT_FALSE(IsValidIndex(std::uint64_t{1} << 32U, 3));
    EXPECT_FALSE(IsValidIndex(std::numeric_limits<std::uint32_t>::max(), 3));
}

TEST(CheckedAccess, CheckIndexThrowsForABadIndexOnly)
{
    EXPECT_NO_THROW(CheckIndex(2, 3));
    EXPECT_EQ(TextOfBadSubscript([] { CheckIndex(3, 3); }), kText);
    EXPECT_EQ(TextOfBadSubscript([] { CheckIndex(-1, 3); }), kText);
}

TEST(CheckedAccess, CheckIndicesFindsABadIndexAtEveryPosition)
{
    const std::vector<std::uint32_t> good = {2, 0, 1, 2};
    EXPECT_NO_THROW(CheckIndices(good, 3));
    for (std::size_t place = 0; place < good.size(); ++place)
    {
        std::vector<std::uint32_t> bad = good;
        bad[place] = 3;
        EXPECT_EQ(TextOfBadSubscript([&bad] { CheckIndices(bad, 3); }), kText) << "place " << place;
    }
}

TEST(CheckedAccess, EmptyListOfIndicesIsValidForAnEmptySequence)
{
    EXPECT_NO_THROW(CheckIndices(std::vector<std::int32_t>(), 0));
}

TEST(CheckedAccess, AtReturnsTheElementItself)
{
    std::vector<int> numbers = {10, 11, 12};
    EXPECT_EQ(&At(numbers, 1), &numbers[1]);
    At(numbers, 2U) = 7;
    EXPECT_EQ(numbers.back(), 7);

    const std::array<int, 2> fixed = {1, 2};
    EXPECT_EQ(&At(fixed, 1), &fixed[1]);
    EXPECT_EQ(TextOfBadSubscript([&fixed] { At(fixed, 2); }), kText);
    EXPECT_EQ(TextOfBadSubscript([&numbers] { At(numbers, -1); }), kText);
}

}  // namespace
