#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sceneprep/compare/MatchPieces.h>

#include <algorithm>
#include <chrono>
#include <numeric>
#include <random>

namespace
{

using namespace Sceneprep;
using testing::ElementsAre;
using testing::IsEmpty;

/// Triangles of size 1 at random places of a cube.
std::vector<Piece> RandomPieces(std::size_t count, float extent = 100)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> place(-extent, extent);
    std::uniform_real_distribution<float> value(-1, 1);
    std::vector<Piece> pieces(count);
    for (Piece& piece : pieces)
    {
        piece.center = {place(random), place(random), place(random)};
        piece.across = {value(random), value(random), value(random)};
        piece.size = 1;
        piece.normals = value(random);
        piece.texCoords = value(random);
        piece.others = value(random);
        piece.tangents = value(random);
    }
    return pieces;
}

std::vector<std::uint32_t> AllOf(const std::vector<Piece>& pieces)
{
    std::vector<std::uint32_t> all(pieces.size());
    std::iota(all.begin(), all.end(), 0U);
    return all;
}

struct Unmatched
{
    std::vector<std::uint32_t> before;
    std::vector<std::uint32_t> after;
};

Unmatched Match(const std::vector<Piece>& before, const std::vector<Piece>& after, const PieceTolerance& tolerance = {})
{
    Unmatched unmatched{AllOf(before), AllOf(after)};
    MatchPieces(before, after, {0, 1}, {0, 1}, tolerance, unmatched.before, unmatched.after);
    return unmatched;
}

std::vector<Piece> Shuffled(std::vector<Piece> pieces)
{
    std::shuffle(pieces.begin(), pieces.end(), std::mt19937(3));
    return pieces;
}

TEST(MatchPiecesTest, OrderDoesNotMatter)
{
    const std::vector<Piece> pieces = RandomPieces(5000);
    const Unmatched unmatched = Match(pieces, Shuffled(pieces));
    EXPECT_THAT(unmatched.before, IsEmpty());
    EXPECT_THAT(unmatched.after, IsEmpty());
}

TEST(MatchPiecesTest, RoundingDoesNotMatterAlsoAtBordersOfCells)
{
    for (const float offset : {0.0F, 1000.0F, 1e6F})
    {
        std::vector<Piece> pieces = RandomPieces(5000);
        for (Piece& piece : pieces)
            piece.center[0] += offset;
        std::vector<Piece> noisy = Shuffled(pieces);
        std::mt19937 random(5);
        for (Piece& piece : noisy)
        {
            for (float& c : piece.center)
                c = std::nextafter(c, random() % 2 == 0 ? -1e9F : 1e9F);
        }
        const Unmatched unmatched = Match(pieces, noisy);
        EXPECT_THAT(unmatched.before, IsEmpty()) << offset;
        EXPECT_THAT(unmatched.after, IsEmpty()) << offset;
    }
}

TEST(MatchPiecesTest, FindsOneMovedPieceAmongMany)
{
    const std::vector<Piece> pieces = RandomPieces(100000);
    std::vector<Piece> moved = pieces;
    moved[54321].center[1] += 0.01F;
    const Unmatched unmatched = Match(pieces, moved);
    EXPECT_THAT(unmatched.before, ElementsAre(54321U));
    EXPECT_THAT(unmatched.after, ElementsAre(54321U));
}

TEST(MatchPiecesTest, EveryValueMatters)
{
    const std::vector<Piece> pieces = RandomPieces(10);
    const auto expectFound = [&](const auto& change) {
        std::vector<Piece> changed = pieces;
        change(changed[4]);
        EXPECT_THAT(Match(pieces, changed).before, ElementsAre(4U));
    };
    expectFound([](Piece& piece) { piece.look = 1; });
    expectFound([](Piece& piece) { piece.size = 1.1F; });
    expectFound([](Piece& piece) { piece.normals += 0.01F; });
    expectFound([](Piece& piece) { piece.texCoords += 0.001F; });
    expectFound([](Piece& piece) { piece.others += 0.001F; });
    expectFound([](Piece& piece) { piece.tangents += 0.1F; });
    expectFound([](Piece& piece) { piece.across = {-piece.across[0], -piece.across[1], -piece.across[2]}; });
}

TEST(MatchPiecesTest, WhatIsNotComparedDoesNotMatter)
{
    const std::vector<Piece> pieces = RandomPieces(10);
    std::vector<Piece> changed = pieces;
    for (Piece& piece : changed)
    {
        piece.across = {-piece.across[0], -piece.across[1], -piece.across[2]};
        piece.normals += 1;
        piece.texCoords += 1;
        piece.others += 1;
        piece.tangents += 1;
    }
    PieceTolerance tolerance;
    tolerance.winding = tolerance.normals = tolerance.texCoords = tolerance.others = false;
    EXPECT_THAT(Match(pieces, changed, tolerance).before, IsEmpty());
    EXPECT_EQ(Match(pieces, changed).before.size(), 10U);
}

TEST(MatchPiecesTest, EachPieceIsMatchedOnce)
{
    std::vector<Piece> pieces = RandomPieces(1);
    pieces.resize(5, pieces.front());
    const std::vector<Piece> fewer(pieces.begin(), pieces.begin() + 3);
    EXPECT_EQ(Match(pieces, fewer).before.size(), 2U);
    EXPECT_EQ(Match(fewer, pieces).after.size(), 2U);
}

double SecondsToMatch(const std::vector<Piece>& before, const std::vector<Piece>& after)
{
    const auto start = std::chrono::steady_clock::now();
    Match(before, after);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(MatchPiecesTest, ManyEqualPiecesTakeLinearTime)
{
    const std::vector<Piece> one = RandomPieces(1);
    const std::vector<Piece> equal(50000, one.front());
    EXPECT_LT(SecondsToMatch(equal, equal), 10);  // each with each other would take 50 times as long
    const Unmatched unmatched = Match(equal, equal);
    EXPECT_THAT(unmatched.before, IsEmpty());
}

TEST(MatchPiecesTest, AWallOfEqualXTakesLinearTime)
{
    std::vector<Piece> wall = RandomPieces(50000);
    for (Piece& piece : wall)
        piece.center[0] = 5;
    EXPECT_LT(SecondsToMatch(wall, Shuffled(wall)), 10);
}

TEST(MatchPiecesTest, ASmallDenseMeshInALargeSceneTakesLinearTime)
{
    std::vector<Piece> pieces = RandomPieces(50000, 0.01F);
    pieces.front().center = {1e6F, 1e6F, 1e6F};
    EXPECT_LT(SecondsToMatch(pieces, Shuffled(pieces)), 10);
}

TEST(MatchRunsTest, MatchesRunsThatChangedPlacesAndLeavesTheRest)
{
    const std::vector<Piece> pieces = RandomPieces(100);
    std::vector<Piece> moved(pieces.begin() + 40, pieces.end());
    moved.insert(moved.end(), pieces.begin(), pieces.begin() + 40);
    moved[10].texCoords += 1;
    Unmatched unmatched{AllOf(pieces), AllOf(moved)};
    MatchRuns(pieces, moved, {0, 1}, {0, 1}, {}, {0, 40}, unmatched.before, unmatched.after);
    EXPECT_THAT(unmatched.before, ElementsAre(50U));
    EXPECT_THAT(unmatched.after, ElementsAre(10U));
}

TEST(MatchRunsTest, EachPieceIsMatchedOnce)
{
    std::vector<Piece> pieces = RandomPieces(3);
    std::vector<Piece> twice = pieces;
    twice.insert(twice.end(), pieces.begin(), pieces.end());
    Unmatched unmatched{AllOf(pieces), AllOf(twice)};
    MatchRuns(pieces, twice, {0, 1}, {0, 1}, {}, {0}, unmatched.before, unmatched.after);
    EXPECT_THAT(unmatched.before, IsEmpty());
    EXPECT_THAT(unmatched.after, ElementsAre(3U, 4U, 5U));
}

TEST(MatchPiecesTest, PairsByPlaceSayWhatDiffers)
{
    const std::vector<Piece> pieces = RandomPieces(10);
    std::vector<Piece> changed = pieces;
    changed[2].look = 1;
    changed[2].normals += 1;
    Unmatched unmatched{AllOf(pieces), AllOf(changed)};
    PieceTolerance tolerance;
    tolerance.placeOnly = true;
    EXPECT_EQ(MatchPieces(pieces, changed, {0, 1}, {0, 1}, tolerance, unmatched.before, unmatched.after).size(), 10U);
    const PieceDifferences differences = ComparePieces(pieces[2], changed[2], {0, 1}, {0, 1}, tolerance);
    EXPECT_TRUE(differences.look);
    EXPECT_TRUE(differences.normals);
    EXPECT_FALSE(differences.texCoords);
    EXPECT_FALSE(ComparePieces(pieces[1], changed[1], {0, 1}, {0, 1}, tolerance).HasAny());
}

}  // namespace
