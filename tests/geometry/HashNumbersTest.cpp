#include <importing/geometry/HashNumbers.h>

#include <support/Random.h>

#include <gtest/gtest.h>

#include <map>

namespace
{

using namespace Importing;
using namespace Support;

/// Numbers hashes in order and compares with a map at every step.
template <typename NextHash>
void ExpectLikeAMap(std::size_t vertexCount, std::size_t steps, NextHash nextHash)
{
    HashNumbers numbers(vertexCount);
    std::map<std::uint32_t, std::uint32_t> expected;
    for (std::size_t step = 0; step < steps; ++step)
    {
        const std::uint32_t hash = nextHash(step);
        std::uint32_t& number = numbers[hash];
        const auto [known, isNew] = expected.emplace(hash, static_cast<std::uint32_t>(step));
        ASSERT_EQ(number, isNew ? kNoNumber : known->second) << "step " << step;
        if (isNew)
            number = known->second;
    }
}

TEST(HashNumbers, NewHashHasNoNumber)
{
    HashNumbers numbers(1);
    EXPECT_EQ(numbers[7], kNoNumber);
}

TEST(HashNumbers, NumberIsStored)
{
    HashNumbers numbers(2);
    numbers[7] = 3;
    numbers[8] = 4;
    EXPECT_EQ(numbers[7], 3U);
    EXPECT_EQ(numbers[8], 4U);
}

TEST(HashNumbers, NumberIsReplaced)
{
    HashNumbers numbers(1);
    numbers[7] = 3;
    numbers[7] = 4;
    EXPECT_EQ(numbers[7], 4U);
}

TEST(HashNumbers, ZeroAndTheLargestHashAreOrdinaryHashes)
{
    HashNumbers numbers(2);
    EXPECT_EQ(numbers[0], kNoNumber);
    numbers[0] = 5;
    EXPECT_EQ(numbers[0xFFFFFFFFU], kNoNumber);
    numbers[0xFFFFFFFFU] = 0;
    EXPECT_EQ(numbers[0], 5U);
    EXPECT_EQ(numbers[0xFFFFFFFFU], 0U);
}

TEST(HashNumbers, StoresAHashForEveryVertexOfMeshesOfAnySize)
{
    for (std::size_t vertexCount = 1; vertexCount <= 300; ++vertexCount)
        ExpectLikeAMap(vertexCount, 2 * vertexCount,
                       [=](std::size_t step) { return static_cast<std::uint32_t>(step % vertexCount); });
}

TEST(HashNumbers, HashesThatDifferOnlyInTheirUpperBitsAreDistinct)
{
    ExpectLikeAMap(4096, 8192, [](std::size_t step) { return static_cast<std::uint32_t>(step % 4096) << 20U; });
}

TEST(HashNumbers, MatchesAStandardMap)
{
    Random random(1);
    ExpectLikeAMap(5000, 20000, [&](std::size_t) { return random.Below(5000) * 0x9E3779B9U; });
}

}  // namespace
