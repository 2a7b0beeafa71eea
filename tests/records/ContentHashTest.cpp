#include <importing/records/ContentHash.h>

#include <importing/records/Vertex.h>
#include <math/FloatBits.h>
#include <records/HashModel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace
{

using namespace Importing;
using Support::HashModel;

std::uint32_t DigestOf(const std::string& bytes) { return Digest(bytes.data(), bytes.size()); }

std::uint32_t DigestOf(std::uint32_t number) { return Digest(&number, sizeof(number)); }

TEST(Digest, DependsOnlyOnTheBytes)
{
    const std::string text = "SceneContainer";
    const std::string shifted = "x" + text;
    EXPECT_EQ(DigestOf(text), DigestOf(std::string(text)));
    EXPECT_EQ(DigestOf(text), Digest(shifted.data() + 1, text.size())) << "the address does not matter";
}

TEST(Digest, EmptySequenceHasADigest)
{
    const char nothing = 0;
    EXPECT_EQ(Digest(&nothing, 0), DigestOf(std::string()));
    EXPECT_NE(DigestOf(std::string()), DigestOf(std::string(1, '\0')));
}

TEST(Digest, EveryByteMattersAtEveryLength)
{
    for (std::size_t size = 1; size <= 80; ++size)
    {
        const std::string bytes(size, 'a');
        for (std::size_t place = 0; place < size; ++place)
        {
            std::string other = bytes;
            other[place] = 'b';
            EXPECT_NE(DigestOf(bytes), DigestOf(other)) << size << ' ' << place;
        }
    }
}

TEST(Digest, OrderOfBytesAndOfWordsMatters)
{
    EXPECT_NE(DigestOf("abc"), DigestOf("cba"));
    EXPECT_NE(DigestOf("abcdefgh"), DigestOf("efghabcd"));
}

TEST(Digest, SequencesOfZerosOfDifferentLengthsDiffer)
{
    std::set<std::uint32_t> digests;
    for (std::size_t size = 0; size < 200; ++size)
        digests.insert(DigestOf(std::string(size, '\0')));
    EXPECT_EQ(digests.size(), 200U);
}

#if !defined(_WIN32)  // On Windows the platform's function is used.

std::size_t Duplicates(std::vector<std::uint32_t> values)
{
    std::sort(values.begin(), values.end());
    return values.size() - static_cast<std::size_t>(std::unique(values.begin(), values.end()) - values.begin());
}

TEST(Digest, IsTheSameOnEveryPlatform)
{
    EXPECT_EQ(DigestOf(std::string()), 0x85EBCA77U);
    EXPECT_EQ(DigestOf("abc"), 0x1A8DB5AAU);
    EXPECT_EQ(DigestOf("SceneContainer"), 0x138F0D0BU);
    EXPECT_EQ(DigestOf(0U), 0x3C852E3FU);
    EXPECT_EQ(DigestOf(0x3F800000U), 0x95787EC2U);
}

TEST(Digest, DistinctSequencesOfFourBytesHaveDistinctDigests)
{
    std::vector<std::uint32_t> digests;
    std::mt19937 random(1);
    std::set<std::uint32_t> numbers;
    while (numbers.size() < 300000)
        numbers.insert(static_cast<std::uint32_t>(random()));
    for (std::uint32_t i = 0; i < 300000; ++i)
        numbers.insert({i, 0U - i, i << 12U, std::bit_cast<std::uint32_t>(static_cast<float>(i))});
    digests.reserve(numbers.size());
    for (const std::uint32_t number : numbers)
        digests.push_back(DigestOf(number));
    EXPECT_EQ(Duplicates(digests), 0U);
}

TEST(Digest, EveryInputBitChangesHalfOfTheOutputBits)
{
    constexpr int kSamples = 4096;
    constexpr int kHalf = kSamples / 2;
    std::mt19937 random(2);
    for (unsigned bit = 0; bit < 32; ++bit)
    {
        std::vector<int> flips(32, 0);
        for (int i = 0; i < kSamples; ++i)
        {
            const auto number = static_cast<std::uint32_t>(random());
            const std::uint32_t changed = DigestOf(number) ^ DigestOf(number ^ (1U << bit));
            for (unsigned out = 0; out < 32; ++out)
                flips[out] += static_cast<int>((changed >> out) & 1U);
        }
        // Half of 4096, plus or minus eight standard deviations.
        for (unsigned out = 0; out < 32; ++out)
            EXPECT_NEAR(flips[out], kHalf, 256) << "input bit " << bit << ", output bit " << out;
    }
}

#endif

TEST(ContentHash, StartsAtZero) { EXPECT_EQ(ContentHash().Value(), 0U); }

TEST(ContentHash, FirstDigestIsTheHashOfOneField) { EXPECT_EQ(ContentHash().Add(7U).Value(), DigestOf(7U)); }

TEST(ContentHash, CombinesDigestsByThirtyOneAndExclusiveOr)
{
    const std::uint32_t first = DigestOf(1U);
    const std::uint32_t second = DigestOf(2U);
    const std::uint32_t third = DigestOf(3U);
    EXPECT_EQ(ContentHash().Add(1U).Add(2U).Add(3U).Value(), ((first * 31U ^ second) * 31U) ^ third);
}

TEST(ContentHash, FieldsAreHashedInOrder)
{
    EXPECT_NE(ContentHash().Add(1U).Add(2U).Value(), ContentHash().Add(2U).Add(1U).Value());
}

TEST(ContentHash, FloatsLoseTheirLowestEightBits)
{
    EXPECT_EQ(ContentHash().Add(Support::FromBits(0x3F8000FFU)).Value(), ContentHash().Add(1.0F).Value());
    EXPECT_NE(ContentHash().Add(Support::FromBits(0x3F800100U)).Value(), ContentHash().Add(1.0F).Value());
    EXPECT_EQ(ContentHash().Add(1.0F).Value(), DigestOf(0x3F800000U));
}

TEST(ContentHash, ZerosOfDifferentSignDiffer)
{
    EXPECT_NE(ContentHash().Add(0.0F).Value(), ContentHash().Add(-0.0F).Value());
}

TEST(ContentHash, ColourIsHashedAsAlphaRedGreenBlue)
{
    EXPECT_EQ(ContentHash().Add(D3DXCOLOR(1, 2, 3, 4)).Value(), HashModel().Floats({4, 1, 2, 3}).Fold());
}

TEST(ContentHash, VectorIsHashedFromXToZ)
{
    EXPECT_EQ(ContentHash().Add(D3DXVECTOR3(1, 2, 3)).Value(), HashModel().Floats({1, 2, 3}).Fold());
}

TEST(ContentHash, MatrixIsHashedRowByRow)
{
    const D3DXMATRIX matrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    EXPECT_EQ(ContentHash().Add(matrix).Value(),
              HashModel().Floats({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}).Fold());
}

TEST(ContentHash, TextIsOneDigestWithoutTerminator)
{
    EXPECT_EQ(ContentHash().Add(std::string("abc")).Value(), DigestOf("abc"));
    EXPECT_EQ(ContentHash().Add(std::string()).Value(), DigestOf(std::string()));
    EXPECT_NE(ContentHash().Add(std::string("a\0b", 3)).Value(), ContentHash().Add(std::string("a")).Value());
}

TEST(ContentHash, NumbersAreHashedWithAllTheirBytes)
{
    EXPECT_EQ(ContentHash().Add(std::int32_t{-1}).Value(), DigestOf(0xFFFFFFFFU));
    EXPECT_EQ(ContentHash().Add(true).Value(), DigestOf(std::string(1, '\1')));
    EXPECT_EQ(ContentHash().Add(false).Value(), DigestOf(std::string(1, '\0')));
    const std::uint64_t three = 3;
    EXPECT_EQ(ContentHash().Add(three).Value(), Digest(&three, 8));
}

TEST(ContentHash, TransformIsOneUnmaskedDigestOfItsStoredForm)
{
    Transform transform;
    EXPECT_EQ(ContentHash().Add(transform).Value(), HashModel().Placement(transform).Fold());

    D3DXMATRIX nearly = Transform::Indentity;
    nearly._11 = std::nextafter(1.0F, 2.0F);
    EXPECT_NE(ContentHash().Add(Transform(nearly)).Value(), ContentHash().Add(transform).Value());
}

TEST(ContentHash, FormsOfOneTransformDiffer)
{
    D3DXVECTOR3 offset(0, 0, 0);
    Transform euler;
    euler.SetEuler(offset, D3DXVECTOR3(0, 0, 0), D3DXVECTOR3(1, 1, 1));
    Transform quaternion;
    quaternion.SetQuaterion(offset, D3DXQUATERNION(0, 0, 0, 1), D3DXVECTOR3(1, 1, 1));
    const std::uint32_t hash = ContentHash().Add(Transform()).Value();
    EXPECT_NE(ContentHash().Add(euler).Value(), hash);
    EXPECT_NE(ContentHash().Add(quaternion).Value(), hash);
    EXPECT_NE(ContentHash().Add(quaternion).Value(), ContentHash().Add(euler).Value());
}

#if !defined(_WIN32)

/// The vertices (x, y, z) x step for integers x, y, z from `first` to `first` + 99.
class VertexGrid : public testing::TestWithParam<std::pair<int, float>>
{
protected:
    static std::vector<std::uint32_t> Hashes(int first, float step)
    {
        const auto place = [first, step](int i) { return static_cast<float>(first + i) * step; };
        std::vector<std::uint32_t> hashes;
        hashes.reserve(1000000);
        for (int x = 0; x < 100; ++x)
            for (int y = 0; y < 100; ++y)
                for (int z = 0; z < 100; ++z)
                    hashes.push_back(Vertex(place(x), place(y), place(z)).GetHash());
        return hashes;
    }

    static std::size_t EqualPairs(std::vector<std::uint32_t> hashes)
    {
        std::sort(hashes.begin(), hashes.end());
        std::size_t pairs = 0;
        for (auto run = hashes.begin(); run != hashes.end();)
        {
            const auto end = std::upper_bound(run, hashes.end(), *run);
            const auto size = static_cast<std::size_t>(end - run);
            pairs += size * (size - 1) / 2;
            run = end;
        }
        return pairs;
    }
};

TEST_P(VertexGrid, AMillionVerticesCollideNoMoreThanByChance)
{
    // 1,000,000 random values of 32 bits form n(n-1)/2 / 2^32 = 116.4 equal pairs on average; the standard deviation is
    // the square root of that, 10.8. The limit is three standard deviations above the average.
    const double mean = 1e6 * (1e6 - 1) / 2 / 4294967296.0;
    const double limit = mean + 3 * std::sqrt(mean);
    const std::size_t pairs = EqualPairs(Hashes(GetParam().first, GetParam().second));
    RecordProperty("equal_pairs", static_cast<int>(pairs));
    EXPECT_LE(static_cast<double>(pairs), limit);
}

// Integers, numbers that are not exact, and both sides of 0.
INSTANTIATE_TEST_SUITE_P(Steps, VertexGrid,
                         testing::Values(std::pair(0, 1.0F), std::pair(0, 0.1F), std::pair(-50, 1.0F),
                                         std::pair(-50, 0.3F), std::pair(0, 0.25F)));

#endif

}  // namespace
