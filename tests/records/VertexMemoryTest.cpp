#include <importing/records/Vertex.h>

#include <records/CountedAllocations.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <string>
#include <utility>
#include <vector>

// Tests the layout of a vertex, its allocations, and its copies and moves.

namespace
{

using Importing::Vertex;
using Support::CountedAllocations;

Vertex With(std::uint64_t texCoords, std::uint64_t weights)
{
    Vertex vertex(1, 2, 3);
    vertex.SetNormal(D3DXVECTOR3(4, 5, 6));
    for (std::uint64_t i = 0; i < texCoords; ++i)
        vertex.SetTexCoord(D3DXVECTOR2(static_cast<float>(i), 7), i);
    for (std::uint64_t i = 0; i < weights; ++i)
        vertex.SetWeight(static_cast<std::uint32_t>(i), 0.5F, i);
    return vertex;
}

testing::AssertionResult HasContent(Vertex& vertex, std::uint64_t texCoords, std::uint64_t weights)
{
    if (vertex.GetTexCoordCount() != texCoords || vertex.GetWeightsCount() != weights)
        return testing::AssertionFailure()
               << vertex.GetTexCoordCount() << " UV sets, " << vertex.GetWeightsCount() << " weights";
    bool isSame = vertex.GetPosition() == D3DXVECTOR3(1, 2, 3) && vertex.GetNormal() == D3DXVECTOR3(4, 5, 6);
    for (std::uint64_t i = 0; i < texCoords; ++i)
        isSame = isSame && vertex.GetTexCoord(static_cast<int>(i)) == D3DXVECTOR2(static_cast<float>(i), 7);
    for (std::uint64_t i = 0; i < weights; ++i)
        isSame = isSame && vertex.GetWeight(i) == Vertex::Weight(static_cast<std::uint32_t>(i), 0.5F);
    return isSame ? testing::AssertionSuccess() : testing::AssertionFailure() << "the values differ";
}

/// Sizes that are stored in the vertex itself, at the limit, and on the heap.
using Sizes = std::pair<std::uint64_t, std::uint64_t>;

class VertexOfSize : public testing::TestWithParam<Sizes>
{
protected:
    std::uint64_t TexCoords() const { return GetParam().first; }
    std::uint64_t Weights() const { return GetParam().second; }
    Vertex Made() const { return With(TexCoords(), Weights()); }
    testing::AssertionResult IsAsMade(Vertex& vertex) const { return HasContent(vertex, TexCoords(), Weights()); }
};

INSTANTIATE_TEST_SUITE_P(Sizes, VertexOfSize,
                         testing::Values(Sizes(0, 0), Sizes(1, 0), Sizes(2, 0), Sizes(3, 0), Sizes(4, 0), Sizes(9, 0),
                                         Sizes(0, 1), Sizes(2, 4), Sizes(3, 2), Sizes(5, 7)),
                         [](const auto& row) {
                             return "UVs" + std::to_string(row.param.first) + "Weights" +
                                    std::to_string(row.param.second);
                         });

TEST(VertexMemory, VertexHasFiftySixBytesAndAPointer) { EXPECT_EQ(sizeof(Vertex), 56 + sizeof(void*)); }

TEST(VertexMemory, UpToTwoUVSetsAllocateNothing)
{
    const std::size_t before = CountedAllocations::Taken();
    for (std::uint64_t texCoords = 0; texCoords <= 2; ++texCoords)
    {
        Vertex vertex = With(texCoords, 0);
        Vertex copy(vertex);
        Vertex moved(std::move(copy));
        copy = moved;
        moved = std::move(copy);
        moved.GetHash();
        moved.Scale(2);
        moved.ClearWeights();
        for (std::uint64_t set = 0; set < texCoords; ++set)
            moved.TransformTexCoord(D3DXMATRIX(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), set);
    }
    const std::size_t after = CountedAllocations::Taken();
    EXPECT_EQ(after - before, 0U);
}

TEST_P(VertexOfSize, OwnsAtMostOneAllocation)
{
    const std::size_t before = CountedAllocations::InUse();
    const Vertex vertex = Made();
    const std::size_t blocks = CountedAllocations::InUse() - before;
    EXPECT_LE(blocks, TexCoords() <= 2 && Weights() == 0 ? 0U : 1U);
}

TEST_P(VertexOfSize, CopyMakesAtMostOneAllocation)
{
    const Vertex vertex = Made();
    const std::size_t before = CountedAllocations::Taken();
    const Vertex copy(vertex);  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_LE(CountedAllocations::Taken() - before, TexCoords() <= 2 && Weights() == 0 ? 0U : 1U);
}

TEST_P(VertexOfSize, MovesAllocateNothing)
{
    Vertex vertex = Made();
    const std::size_t before = CountedAllocations::Taken();
    Vertex moved(std::move(vertex));
    Vertex assigned;
    assigned = std::move(moved);
    EXPECT_EQ(CountedAllocations::Taken(), before);
    EXPECT_TRUE(IsAsMade(assigned));
}

TEST_P(VertexOfSize, MovedFromVertexHasNoValidHash)
{
    Vertex first = Made();
    Vertex second = Made();
    first.GetHash();
    second.GetHash();
    Vertex moved(std::move(first));
    moved = std::move(second);
    EXPECT_FALSE(first.GetIsHashCodeValid());   // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(second.GetIsHashCodeValid());  // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(moved.GetIsHashCodeValid());
}

TEST_P(VertexOfSize, ClearingWeightsFreesTheBlockThatTextureCoordinatesDoNotNeed)
{
    const std::size_t before = CountedAllocations::InUse();
    Vertex vertex = Made();
    vertex.ClearWeights();
    const std::size_t blocks = CountedAllocations::InUse() - before;
    EXPECT_LE(blocks, TexCoords() <= 2 ? 0U : 1U);
    EXPECT_TRUE(HasContent(vertex, TexCoords(), 0));
    Vertex copy(vertex);
    EXPECT_TRUE(HasContent(copy, TexCoords(), 0));
    copy.AddWeight(0, 0.5F);
    EXPECT_TRUE(HasContent(copy, TexCoords(), 1));
}

TEST_P(VertexOfSize, FreesAllMemory)
{
    const std::size_t before = CountedAllocations::InUse();
    {
        Vertex vertex = Made();
        Vertex copy(vertex);
        Vertex moved(std::move(copy));
        vertex = moved;
        vertex = With(4, 4);
        vertex = With(1, 0);
        std::vector<Vertex> vertices(5, moved);
        vertices.erase(vertices.begin() + 1);
        vertices.insert(vertices.begin(), vertex);
    }
    EXPECT_EQ(CountedAllocations::InUse(), before);
}

TEST_P(VertexOfSize, CopyIsIndependent)
{
    Vertex vertex = Made();
    Vertex copy(vertex);
    EXPECT_TRUE(IsAsMade(copy));
    copy.SetTexCoord(D3DXVECTOR2(99, 99), 0);
    copy.SetWeight(99, 99, 0);
    EXPECT_TRUE(IsAsMade(vertex));
}

TEST_P(VertexOfSize, CopiesGrowLikeTheirOriginals)
{
    const Vertex vertex = Made();
    Vertex copy(vertex);
    for (std::uint64_t i = TexCoords(); i < 12; ++i)
        copy.SetTexCoord(D3DXVECTOR2(static_cast<float>(i), 7), i);
    for (std::uint64_t i = Weights(); i < 12; ++i)
        copy.AddWeight(static_cast<std::uint32_t>(i), 0.5F);
    EXPECT_TRUE(HasContent(copy, 12, 12));
}

TEST_P(VertexOfSize, AssignedOverEverySize)
{
    for (const Sizes& old : {Sizes(0, 0), Sizes(2, 0), Sizes(3, 0), Sizes(8, 0), Sizes(1, 3), Sizes(6, 6)})
    {
        Vertex vertex = Made();
        Vertex copied = With(old.first, old.second);
        copied = vertex;
        EXPECT_TRUE(IsAsMade(copied));
        EXPECT_TRUE(IsAsMade(vertex));
        Vertex moved = With(old.first, old.second);
        moved = std::move(vertex);
        EXPECT_TRUE(IsAsMade(moved));
    }
}

TEST_P(VertexOfSize, SelfAssignmentChangesNothing)
{
    Vertex vertex = Made();
    const std::uint32_t hash = vertex.GetHash();
    Vertex& same = vertex;
    vertex = same;
    EXPECT_TRUE(IsAsMade(vertex));
    vertex = std::move(same);
    EXPECT_TRUE(IsAsMade(vertex));
    EXPECT_TRUE(vertex.GetIsHashCodeValid());
    EXPECT_EQ(vertex.GetHash(), hash);
}

TEST_P(VertexOfSize, SwappedVerticesHaveExchangedTheirContent)
{
    Vertex a = Made();
    Vertex b = With(5, 1);
    const std::uint32_t hash = a.GetHash();
    std::swap(a, b);
    EXPECT_TRUE(IsAsMade(b));
    EXPECT_EQ(b.GetHash(), hash);
    EXPECT_TRUE(HasContent(a, 5, 1));
    EXPECT_FALSE(a.GetIsHashCodeValid());
}

TEST_P(VertexOfSize, CopiesAndMovesHaveTheHash)
{
    Vertex vertex = Made();
    EXPECT_FALSE(Vertex(vertex).GetIsHashCodeValid());
    const std::uint32_t hash = vertex.GetHash();
    Vertex copy(vertex);
    EXPECT_TRUE(copy.GetIsHashCodeValid());
    Vertex assigned;
    assigned = copy;
    EXPECT_TRUE(assigned.GetIsHashCodeValid());
    Vertex moved(std::move(copy));
    EXPECT_TRUE(moved.GetIsHashCodeValid());
    EXPECT_EQ(moved.GetHash(), hash);
    EXPECT_EQ(assigned.GetHash(), hash);
}

TEST_P(VertexOfSize, MovedFromVertexCanBeUsedAgain)
{
    Vertex vertex = Made();
    const Vertex moved(std::move(vertex));
    vertex = With(4, 2);
    EXPECT_TRUE(HasContent(vertex, 4, 2));
}

TEST_P(VertexOfSize, FailedAllocationLeavesTheVertexAsItWas)
{
    Vertex vertex = Made();
    const std::uint32_t hash = vertex.GetHash();
    const Vertex large = With(20, 20);
    const std::size_t before = CountedAllocations::InUse();

    CountedAllocations::FailAfter(0);
    EXPECT_THROW(vertex.SetTexCoord(D3DXVECTOR2(1, 1), 100), std::bad_alloc);
    EXPECT_THROW(vertex.SetWeight(1, 1, 100), std::bad_alloc);
    EXPECT_THROW(vertex = large, std::bad_alloc);
    CountedAllocations::Recover();

    EXPECT_TRUE(IsAsMade(vertex));
    EXPECT_TRUE(vertex.GetIsHashCodeValid());
    EXPECT_EQ(vertex.GetHash(), hash);
    EXPECT_EQ(CountedAllocations::InUse(), before);
}

}  // namespace
