#include <importing/records/Vertex.h>

#include <math/FloatBits.h>
#include <records/HashModel.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Importing::Vertex;
using Support::Change;
using Support::SameBitsOrNaN;

constexpr D3DXMATRIX kIdentity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

/// Returns a vertex with UV sets (i, -i) and weights (10 + i, i / 4).
Vertex With(std::uint64_t texCoords, std::uint64_t weights)
{
    Vertex vertex(1, 2, 3);
    vertex.SetNormal(D3DXVECTOR3(4, 5, 6));
    for (std::uint64_t i = 0; i < texCoords; ++i)
        vertex.SetTexCoord(D3DXVECTOR2(static_cast<float>(i), -static_cast<float>(i)), i);
    for (std::uint64_t i = 0; i < weights; ++i)
        vertex.SetWeight(static_cast<std::uint32_t>(10 + i), static_cast<float>(i) / 4, i);
    return vertex;
}

void ExpectTexCoord(Vertex& vertex, int index, float u, float v)
{
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetTexCoord(index), D3DXVECTOR2(u, v))) << "UV set " << index;
}

TEST(Vertex, Defaults)
{
    Vertex vertex;
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(0, 0, 0)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(0, 0, 0)));
    EXPECT_EQ(vertex.GetTexCoordCount(), 0U);
    EXPECT_EQ(vertex.GetWeightsCount(), 0U);
    EXPECT_FALSE(vertex.GetIsHashCodeValid());
}

TEST(Vertex, ConstructedFromAPosition)
{
    for (Vertex vertex : {Vertex(1, 2, 3), Vertex(D3DXVECTOR3(1, 2, 3))})
    {
        EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(1, 2, 3)));
        EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(0, 0, 0)));
        EXPECT_EQ(vertex.GetTexCoordCount(), 0U);
        EXPECT_EQ(vertex.GetWeightsCount(), 0U);
        EXPECT_FALSE(vertex.GetIsHashCodeValid());
    }
}

TEST(Vertex, ThreeUVSetsAreExpectedAndMoreAreStored)
{
    EXPECT_EQ(Vertex::MAX_NUM_MAP, 3);
    EXPECT_EQ(With(20, 0).GetTexCoordCount(), 20U);
}

TEST(Vertex, NumberOfUVSetsIsACompileTimeConstantWithAnAddress)
{
    static_assert(Vertex::MAX_NUM_MAP == 3);
    const std::array<int, Vertex::MAX_NUM_MAP> sets{};
    EXPECT_EQ(sets.size(), 3U);
    const int* address = &Vertex::MAX_NUM_MAP;
    EXPECT_EQ(*address, 3);
}

TEST(Vertex, PositionAndNormalAreSetInBothForms)
{
    Vertex vertex;
    const float position[3] = {1, 2, 3};
    const float normal[3] = {4, 5, 6};
    vertex.SetPosition(position);
    vertex.SetNormal(normal);
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(1, 2, 3)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(4, 5, 6)));
    vertex.SetPosition(D3DXVECTOR3(7, 8, 9));
    vertex.SetNormal(D3DXVECTOR3(10, 11, 12));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(7, 8, 9)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(10, 11, 12)));
}

// --- Texture coordinates -----------------------------------------------------------------------------------------

TEST(Vertex, SetTexCoordBeyondTheEndAddsTheSetsBelow)
{
    Vertex vertex;
    vertex.SetTexCoord(D3DXVECTOR2(0.25F, 0.75F), 2);
    EXPECT_EQ(vertex.GetTexCoordCount(), 3U);
    ExpectTexCoord(vertex, 0, 0, 0);
    ExpectTexCoord(vertex, 1, 0, 0);
    ExpectTexCoord(vertex, 2, 0.25F, 0.75F);
}

TEST(Vertex, AddedUVSetsAreZeroEvenWhereOtherValuesWereStoredBefore)
{
    for (std::uint64_t last = 0; last < 12; ++last)
    {
        Vertex vertex = With(1, 0);
        vertex.SetTexCoord(D3DXVECTOR2(8, 9), last + 1);
        for (int i = 1; i <= static_cast<int>(last); ++i)
            ExpectTexCoord(vertex, i, 0, 0);
        ExpectTexCoord(vertex, static_cast<int>(last + 1), 8, 9);
    }
}

TEST(Vertex, SetTexCoordOfAnExistingSetKeepsTheOthers)
{
    for (const std::uint64_t count : {1U, 2U, 3U, 4U, 9U})
    {
        Vertex vertex = With(count, 0);
        vertex.SetTexCoord(D3DXVECTOR2(77, 78), 0);
        EXPECT_EQ(vertex.GetTexCoordCount(), count);
        ExpectTexCoord(vertex, 0, 77, 78);
        for (int i = 1; i < static_cast<int>(count); ++i)
            ExpectTexCoord(vertex, i, static_cast<float>(i), -static_cast<float>(i));
    }
}

std::string TextOfBadTexCoord(Vertex& vertex, int index)
{
    try
    {
        vertex.GetTexCoord(index);
    }
    catch (const std::out_of_range& error)
    {
        return error.what();
    }
    return "nothing thrown";
}

TEST(Vertex, GetTexCoordThrowsForABadIndex)
{
    for (const std::uint64_t count : {0U, 2U, 3U, 7U})
    {
        Vertex vertex = With(count, 0);
        const int end = static_cast<int>(count);
        for (const int index : {end, end + 3, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
            EXPECT_EQ(TextOfBadTexCoord(vertex, index), "invalid vector<T> subscript") << count << ' ' << index;
    }
}

TEST(Vertex, EnormousIndexIsALengthErrorAndChangesNothing)
{
    const std::vector<Change<Vertex>> changes = {
        {"SetTexCoord", [](Vertex& v) { v.SetTexCoord(D3DXVECTOR2(1, 1), kLargest); }},
        {"SetTexCoord of half", [](Vertex& v) { v.SetTexCoord(D3DXVECTOR2(1, 1), kLargest / 2); }},
        {"SetTexCoord of -1", [](Vertex& v) { v.SetTexCoord(D3DXVECTOR2(1, 1), static_cast<std::uint64_t>(-1)); }},
        {"TransformTexCoord", [](Vertex& v) { v.TransformTexCoord(kIdentity, kLargest); }},
        {"SetWeight", [](Vertex& v) { v.SetWeight(1, 1, kLargest); }},
        {"SetWeight of half", [](Vertex& v) { v.SetWeight(1, 1, kLargest / 2); }}};
    for (Vertex vertex : {With(0, 0), With(2, 0), With(5, 3)})
    {
        const std::uint32_t hash = vertex.GetHash();
        const std::uint64_t texCoords = vertex.GetTexCoordCount();
        for (const auto& [name, change] : changes)
        {
            try
            {
                change(vertex);
                ADD_FAILURE() << name << " does not throw";
            }
            catch (const std::length_error& error)
            {
                EXPECT_STREQ(error.what(), "vector<T> too long") << name;
            }
            EXPECT_EQ(vertex.GetTexCoordCount(), texCoords) << name;
            EXPECT_TRUE(vertex.GetIsHashCodeValid()) << name;
            EXPECT_EQ(vertex.GetHash(), hash) << name;
        }
    }
}

TEST(Vertex, TransformTexCoordTransformsOneSet)
{
    const D3DXMATRIX matrix(2, 0, 0, 0, 0, 3, 0, 0, 100, 100, 100, 100, 5, 6, 0, 2);
    Vertex vertex = With(2, 0);
    vertex.TransformTexCoord(matrix, 1);
    ExpectTexCoord(vertex, 0, 0, -0.0F);
    ExpectTexCoord(vertex, 1, 3.5F, 1.5F);
}

TEST(Vertex, TransformTexCoordOfAMissingSetAddsItFirst)
{
    const D3DXMATRIX matrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 0, 1);
    Vertex vertex;
    vertex.TransformTexCoord(matrix, 1);
    EXPECT_EQ(vertex.GetTexCoordCount(), 2U);
    ExpectTexCoord(vertex, 0, 0, 0);
    ExpectTexCoord(vertex, 1, 5, 6);
}

// --- Weights -----------------------------------------------------------------------------------------------------

TEST(Vertex, GetWeightBeyondTheEndIsZeroWithoutAnException)
{
    Vertex vertex = With(0, 2);
    EXPECT_EQ(vertex.GetWeight(5), Vertex::Weight(0, 0.0F));
    EXPECT_EQ(vertex.GetWeight(2), Vertex::Weight(0, 0.0F));
    EXPECT_EQ(vertex.GetWeight(kLargest), Vertex::Weight(0, 0.0F));
    EXPECT_EQ(Vertex().GetWeight(0), Vertex::Weight(0, 0.0F));
    EXPECT_EQ(vertex.GetWeight(1), Vertex::Weight(11, 0.25F));
}

TEST(Vertex, SetWeightBeyondTheEndAddsZerosBelow)
{
    Vertex vertex;
    vertex.SetWeight(7, 0.5F, 3);
    EXPECT_EQ(vertex.GetWeightsCount(), 4U);
    for (std::uint64_t i = 0; i < 3; ++i)
        EXPECT_EQ(vertex.GetWeight(i), Vertex::Weight(0, 0.0F));
    EXPECT_EQ(vertex.GetWeight(3), Vertex::Weight(7, 0.5F));
    vertex.SetWeight(8, 0.25F, 1);
    EXPECT_EQ(vertex.GetWeightsCount(), 4U);
    EXPECT_EQ(vertex.GetWeight(1), Vertex::Weight(8, 0.25F));
}

TEST(Vertex, SetWeightAfterClearingAddsZerosWhereOtherWeightsWereStored)
{
    Vertex vertex = With(1, 4);
    vertex.ClearWeights();
    vertex.SetWeight(7, 0.5F, 2);
    EXPECT_EQ(vertex.GetWeight(0), Vertex::Weight(0, 0.0F));
    EXPECT_EQ(vertex.GetWeight(1), Vertex::Weight(0, 0.0F));
    EXPECT_EQ(vertex.GetWeight(2), Vertex::Weight(7, 0.5F));
}

TEST(Vertex, AddWeightDoesNotMergeEntriesOfOneJoint)
{
    Vertex vertex;
    vertex.AddWeight(3, 0.5F);
    vertex.AddWeight(3, 0.5F);
    EXPECT_EQ(vertex.GetWeightsCount(), 2U);
    EXPECT_EQ(vertex.GetWeight(0), Vertex::Weight(3, 0.5F));
    EXPECT_EQ(vertex.GetWeight(1), Vertex::Weight(3, 0.5F));
}

TEST(Vertex, WeightsAreNotLimitedAndNotNormalised)
{
    Vertex vertex = With(1, 0);
    for (std::uint32_t i = 0; i < 1000; ++i)
        vertex.AddWeight(i, 2);
    EXPECT_EQ(vertex.GetWeightsCount(), 1000U);
    for (std::uint32_t i = 0; i < 1000; ++i)
        ASSERT_EQ(vertex.GetWeight(i), Vertex::Weight(i, 2.0F));
    EXPECT_EQ(vertex.GetTexCoordCount(), 1U);
}

TEST(Vertex, ClearWeightsKeepsTheTextureCoordinates)
{
    for (const std::uint64_t texCoords : {0U, 2U, 5U})
    {
        Vertex vertex = With(texCoords, 3);
        vertex.ClearWeights();
        EXPECT_EQ(vertex.GetWeightsCount(), 0U);
        EXPECT_EQ(vertex.GetWeight(0), Vertex::Weight(0, 0.0F));
        ASSERT_EQ(vertex.GetTexCoordCount(), texCoords);
        for (int i = 0; i < static_cast<int>(texCoords); ++i)
            ExpectTexCoord(vertex, i, static_cast<float>(i), -static_cast<float>(i));
    }
}

TEST(Vertex, BothSequencesGrowIndependently)
{
    Vertex vertex;
    for (std::uint32_t i = 0; i < 40; ++i)
    {
        vertex.SetTexCoord(D3DXVECTOR2(static_cast<float>(i), 1), i);
        vertex.AddWeight(i, 0.5F);
        for (std::uint32_t k = 0; k <= i; ++k)
        {
            ExpectTexCoord(vertex, static_cast<int>(k), static_cast<float>(k), 1);
            ASSERT_EQ(vertex.GetWeight(k), Vertex::Weight(k, 0.5F));
        }
    }
}

// --- Changes of position and normal ------------------------------------------------------------------------------

TEST(Vertex, TransformTransformsTheNormalAsAPoint)
{
    // The normal matrix translates and divides: a transform for directions would do neither.
    const D3DXMATRIX position(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 10, 20, 30, 1);
    const D3DXMATRIX normal(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 4, 6, 2);
    Vertex vertex = With(0, 0);
    vertex.Transform(position, normal);
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(12, 24, 36)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(3, 4.5F, 6)));
}

TEST(Vertex, TransformDividesThePositionByW)
{
    const D3DXMATRIX position(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0, 1);
    Vertex vertex(4, 8, 3);
    vertex.Transform(position, kIdentity);
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(1, 2, 0.75F)));
}

TEST(Vertex, ScaleDoesNotChangeTheNormal)
{
    Vertex vertex = With(0, 0);
    vertex.Scale(-2);
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(-2, -4, -6)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(4, 5, 6)));
}

TEST(Vertex, SwapYZSwapsYAndZOfPositionAndNormal)
{
    Vertex vertex = With(0, 0);
    vertex.SwapYZ();
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(1, 3, 2)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(4, 6, 5)));
}

TEST(Vertex, InverseZNegatesZOfPositionAndNormal)
{
    Vertex vertex = With(0, 0);
    vertex.InverseZ();
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(1, 2, -3)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(4, 5, -6)));
}

TEST(Vertex, InverseZOfZeroIsMinusZeroAndHashesDifferently)
{
    Vertex vertex(1, 2, 0);
    const std::uint32_t hash = vertex.GetHash();
    vertex.InverseZ();
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(1, 2, -0.0F)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(0, 0, -0.0F)));
    EXPECT_NE(vertex.GetHash(), hash);
}

TEST(Vertex, InverseNormalNegatesOnlyTheNormal)
{
    Vertex vertex = With(0, 0);
    vertex.InverseNormal();
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetPosition(), D3DXVECTOR3(1, 2, 3)));
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(-4, -5, -6)));
}

TEST(Vertex, NormalizeNormal)
{
    Vertex vertex;
    vertex.NormalizeNormal();
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(0, 0, 0)));
    vertex.SetNormal(D3DXVECTOR3(1, 2, 3));
    vertex.NormalizeNormal();
    EXPECT_TRUE(SameBitsOrNaN(vertex.GetNormal(), D3DXVECTOR3(0x1.11aceep-2F, 0x1.11aceep-1F, 0x1.9a8364p-1F)));
}

}  // namespace
