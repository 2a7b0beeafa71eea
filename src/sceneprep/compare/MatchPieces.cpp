// Matching is a search in a grid. An order-free hash of rounded values would be shorter, but values next to the border
// of a cell round either way, and a hash cannot name the first difference. Sorting both lists by one value would leave
// too many candidates: millions of triangles have coordinates that are nearly equal.
//
// - The pieces before are sorted by cell; a cell is much larger than the tolerance, so that a search looks into one
// cell
//   and rarely into a neighbour.
// - Within a cell they are sorted by a number that is linear in the values, so that a search takes a small window of
// the
//   cell, however many pieces are in it.
// - Pieces that are matched are skipped by links, which are shortened as they are followed; so equal pieces are
//   counted, not searched.
// - Merging leaves the triangles of a mesh in their order. So the piece after the last match is tried first, and a grid
//   of the first pieces of meshes finds where such a run begins.

#include <sceneprep/compare/MatchPieces.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace Sceneprep
{

namespace
{

/// Rounding of a coordinate to single precision, a few times over.
constexpr double kRoundingShare = 3e-7;

constexpr double kNormalTolerance = 2e-3;
constexpr double kTexCoordTolerance = 1e-4;
constexpr double kOtherTolerance = 2e-4;
constexpr double kTangentTolerance = 1e-2;

/// How many cells there are along the longest side of what is compared.
constexpr double kCells = 1024;
constexpr double kCellOverTolerance = 16;

constexpr std::array<double, 3> kSortAxis = {0.6211, 0.3779, 0.8501};

double LargestOf(const std::array<float, 3>& v)
{
    return std::max({std::fabs(static_cast<double>(v[0])), std::fabs(static_cast<double>(v[1])),
                     std::fabs(static_cast<double>(v[2]))});
}

double LengthOfFloats(double x, double y, double z) { return std::sqrt(x * x + y * y + z * z); }

double AcrossLength(const Piece& piece) { return LengthOfFloats(piece.across[0], piece.across[1], piece.across[2]); }

bool AreNear(const std::array<float, 3>& a, const std::array<float, 3>& b, double tolerance, double sign = 1)
{
    for (std::size_t c = 0; c < 3; ++c)
    {
        if (!(std::fabs(a[c] - sign * b[c]) <= tolerance))
            return false;
    }
    return true;
}

double PositionTolerance(const Piece& piece, const PieceTolerance& tolerance)
{
    return tolerance.factor * (tolerance.position + RoundingOf(piece));
}

/// Weights of corners depend on positions, which is the less exact the smaller a piece is.
double Slack(const Piece& piece, double position) { return piece.size > 0 ? 4 * position / piece.size : 0; }

bool Differ(float a, float b, double tolerance, double slack)
{
    const double magnitude = 1 + std::max(std::fabs(static_cast<double>(a)), std::fabs(static_cast<double>(b)));
    return std::fabs(static_cast<double>(a) - b) > (tolerance + slack) * magnitude;
}

/// @return false for values of which one is not to be compared.
bool DifferIfKnown(float a, float b, double tolerance, double slack)
{
    return !std::isnan(a) && !std::isnan(b) && Differ(a, b, tolerance, slack);
}

bool HaveSamePlace(const Piece& a, const Piece& b, const PieceTolerance& tolerance, double position)
{
    if (!AreNear(a.center, b.center, position) || std::fabs(a.size - b.size) > 4 * position)
        return false;
    const double across = 8 * position * (a.size + position);
    return AreNear(a.across, b.across, across) ||
           ((tolerance.placeOnly || !tolerance.winding) && AreNear(a.across, b.across, across, -1));
}

bool NormalsDiffer(const Piece& a, const Piece& b, const PieceTolerance& tolerance, double position, double slack)
{
    if (!tolerance.normals || (tolerance.mayAddNormals && IsFlat(a)))
        return false;
    if (!tolerance.winding && (IsFlat(a) || IsFlat(b)))
        return false;
    const double across = AcrossLength(a);
    if (IsFlat(a) || IsFlat(b))
        slack += across > 0 ? 8 * position * a.size / across : 1;
    return DifferIfKnown(a.normals, b.normals, tolerance.factor * kNormalTolerance, slack);
}

/// Finds pieces by their place.
class PieceGrid
{
public:
    /// @param chosen  which of the pieces to find
    PieceGrid(const std::vector<Piece>& pieces, const std::vector<int>& looks, const PieceTolerance& tolerance,
              const std::vector<std::uint32_t>& chosen)
        : pieces_(pieces), looks_(looks), tolerance_(tolerance), entries_(chosen.size()), next_(chosen.size() + 1)
    {
        ChooseCell(chosen);
        std::iota(next_.begin(), next_.end(), 0U);
        const std::size_t buckets = std::bit_ceil(chosen.size() + 1);
        mask_ = buckets - 1;
        FillBuckets(chosen, buckets);
    }

    /// Returns a piece that agrees with another, and that is not found again; kNone without one.
    template <typename Agree>
    std::uint32_t Take(const Piece& piece, int look, const Agree& agree)
    {
        const double position = PositionTolerance(piece, tolerance_);
        const double window = 7 * position + kKeyRounding * std::fabs(KeyOf(piece));
        const Candidates candidates = CellsNear(piece, position);
        for (std::size_t i = 0; i < candidates.count; ++i)
        {
            const std::size_t bucket = BucketOf(candidates.cells[i], look);
            const std::uint32_t found =
                TakeFrom(starts_[bucket], starts_[bucket + 1], KeyOf(piece), window, position, agree);
            if (found != kNone)
                return found;
        }
        return kNone;
    }

    /// Returns the pieces that have not been taken, in ascending order.
    std::vector<std::uint32_t> Left() const
    {
        std::vector<std::uint32_t> left;
        for (std::uint32_t i = 0; i < entries_.size(); ++i)
        {
            if (next_[i] == i)
                left.push_back(entries_[i].piece);
        }
        std::sort(left.begin(), left.end());
        return left;
    }

    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

private:
    using Cell = std::array<std::int64_t, 3>;

    struct Entry
    {
        float key;
        std::uint32_t piece;
    };

    struct Candidates
    {
        std::array<Cell, 8> cells;
        std::size_t count = 0;
    };

    static constexpr double kKeyRounding = 1e-6;  // of a number in single precision, with margin

    static double KeyOf(const Piece& piece)
    {
        double key = piece.size;
        for (std::size_t c = 0; c < 3; ++c)
            key += kSortAxis[c] * piece.center[c];
        return key;
    }

    void ChooseCell(const std::vector<std::uint32_t>& chosen)
    {
        std::array<float, 3> min = {};
        std::array<float, 3> max = {};
        double largestTolerance = 0;
        for (std::size_t i = 0; i < chosen.size(); ++i)
        {
            const Piece& piece = pieces_[chosen[i]];
            for (std::size_t c = 0; c < 3; ++c)
            {
                min[c] = i == 0 ? piece.center[c] : std::min(min[c], piece.center[c]);
                max[c] = i == 0 ? piece.center[c] : std::max(max[c], piece.center[c]);
            }
            largestTolerance = std::max(largestTolerance, PositionTolerance(piece, tolerance_));
        }
        const double longest = std::max({static_cast<double>(max[0]) - min[0], static_cast<double>(max[1]) - min[1],
                                         static_cast<double>(max[2]) - min[2]});
        cell_ = std::max({longest / kCells, kCellOverTolerance * largestTolerance,
                          static_cast<double>(std::numeric_limits<float>::min())});
    }

    /// Numbers the cells so that far away pieces do not overflow.
    std::int64_t Along(double coordinate) const
    {
        constexpr double kFarthest = 1e15;
        return static_cast<std::int64_t>(std::floor(std::clamp(coordinate / cell_, -kFarthest, kFarthest)));
    }

    Candidates CellsNear(const Piece& piece, double reach) const
    {
        Candidates near;
        near.cells[0] = {Along(piece.center[0]), Along(piece.center[1]), Along(piece.center[2])};
        near.count = 1;
        for (std::size_t c = 0; c < 3; ++c)
        {
            const std::int64_t low = Along(piece.center[c] - reach);
            const std::int64_t high = Along(piece.center[c] + reach);
            const std::int64_t middle = near.cells[0][c];
            if (low == middle && high == middle)
                continue;
            const std::size_t known = near.count;
            for (std::size_t i = 0; i < known; ++i)
            {
                near.cells[near.count] = near.cells[i];
                near.cells[near.count++][c] = low != middle ? low : high;
            }
        }
        return near;
    }

    std::size_t BucketOf(const Cell& cell, int look) const
    {
        std::uint64_t hash = tolerance_.placeOnly ? 0 : static_cast<std::uint64_t>(look) + 1;
        for (const std::int64_t number : cell)
        {
            hash = (hash ^ static_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15ULL;
            hash ^= hash >> 32U;
        }
        return static_cast<std::size_t>(hash) & mask_;
    }

    std::size_t BucketOf(const Piece& piece) const
    {
        return BucketOf({Along(piece.center[0]), Along(piece.center[1]), Along(piece.center[2])},
                        looks_[LookOf(piece)]);
    }

    void FillBuckets(const std::vector<std::uint32_t>& chosen, std::size_t buckets)
    {
        starts_.assign(buckets + 1, 0);
        for (const std::uint32_t piece : chosen)
            ++starts_[BucketOf(pieces_[piece]) + 1];
        std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
        for (const std::uint32_t piece : chosen)  // the starts move to the next bucket's
        {
            const Piece& record = pieces_[piece];
            entries_[starts_[BucketOf(record)]++] = {static_cast<float>(KeyOf(record)), piece};
        }
        std::rotate(starts_.begin(), starts_.end() - 1, starts_.end());
        starts_[0] = 0;
        for (std::size_t b = 0; b < buckets; ++b)
            std::sort(
                entries_.begin() + starts_[b], entries_.begin() + starts_[b + 1],
                [](const Entry& a, const Entry& b2) { return a.key != b2.key ? a.key < b2.key : a.piece < b2.piece; });
    }

    /// Returns the first entry from this one on that has not been taken.
    std::uint32_t NextFree(std::uint32_t entry)
    {
        std::uint32_t free = entry;
        while (next_[free] != free)
            free = next_[free];
        while (next_[entry] != free)
        {
            const std::uint32_t following = next_[entry];
            next_[entry] = free;
            entry = following;
        }
        return free;
    }

    template <typename Agree>
    std::uint32_t TakeFrom(std::uint32_t begin, std::uint32_t end, double key, double window, double position,
                           const Agree& agree)
    {
        if (begin == end)
            return kNone;
        const auto first =
            std::lower_bound(entries_.begin() + begin, entries_.begin() + end, key - window,
                             [](const Entry& entry, double least) { return static_cast<double>(entry.key) < least; });
        for (std::uint32_t i = NextFree(static_cast<std::uint32_t>(first - entries_.begin()));
             i < end && entries_[i].key <= key + window; i = NextFree(i + 1))
        {
            if (!agree(entries_[i].piece, position))
                continue;
            next_[i] = i + 1;
            return entries_[i].piece;
        }
        return kNone;
    }

    const std::vector<Piece>& pieces_;
    const std::vector<int>& looks_;
    const PieceTolerance& tolerance_;
    double cell_ = 1;
    std::size_t mask_ = 0;
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> starts_;  // by bucket
    std::vector<std::uint32_t> next_;    // by entry: itself, or one that may be free
};

}  // namespace

double RoundingOf(const Piece& piece) { return kRoundingShare * (LargestOf(piece.center) + piece.size); }

PieceDifferences ComparePieces(const Piece& before, const Piece& after, const std::vector<int>& lookOfBefore,
                               const std::vector<int>& lookOfAfter, const PieceTolerance& tolerance)
{
    const double position = PositionTolerance(before, tolerance);
    const double slack = Slack(before, position);
    PieceDifferences differences;
    differences.look = lookOfBefore[LookOf(before)] != lookOfAfter[LookOf(after)];
    const double across = 8 * position * (before.size + position);
    differences.winding = tolerance.winding && !AreNear(before.across, after.across, across);
    differences.normals = NormalsDiffer(before, after, tolerance, position, slack);
    differences.texCoords =
        tolerance.texCoords && Differ(before.texCoords, after.texCoords, tolerance.factor * kTexCoordTolerance, slack);
    differences.others =
        tolerance.others && Differ(before.others, after.others, tolerance.factor * kOtherTolerance, slack);
    differences.tangents = tolerance.normals &&
                           DifferIfKnown(before.tangents, after.tangents, tolerance.factor * kTangentTolerance, slack);
    return differences;
}

namespace
{

bool Agree(const Piece& before, const Piece& after, const std::vector<int>& lookOfBefore,
           const std::vector<int>& lookOfAfter, const PieceTolerance& tolerance, double position)
{
    return HaveSamePlace(before, after, tolerance, position) &&
           (tolerance.placeOnly || !ComparePieces(before, after, lookOfBefore, lookOfAfter, tolerance).HasAny());
}

}  // namespace

void MatchRuns(const std::vector<Piece>& beforePieces, const std::vector<Piece>& afterPieces,
               const std::vector<int>& lookOfBefore, const std::vector<int>& lookOfAfter,
               const PieceTolerance& tolerance, const std::vector<std::uint32_t>& starts,
               std::vector<std::uint32_t>& before, std::vector<std::uint32_t>& after)
{
    constexpr std::size_t kMostSkipped = 2;  // pieces that only one side has
    PieceGrid grid(beforePieces, lookOfBefore, tolerance, starts);
    std::vector<bool> isFree(beforePieces.size(), false);
    for (const std::uint32_t index : before)
        isFree[index] = true;
    std::size_t expected = beforePieces.size();
    const auto take = [&](const Piece& piece) {
        const auto agrees = [&](std::size_t index, double position) {
            return isFree[index] && Agree(beforePieces[index], piece, lookOfBefore, lookOfAfter, tolerance, position);
        };
        const double position = PositionTolerance(piece, tolerance);
        std::size_t found = beforePieces.size();
        for (std::size_t i = expected; i < std::min(expected + kMostSkipped, beforePieces.size()); ++i)
        {
            if (found == beforePieces.size() && agrees(i, position))
                found = i;
        }
        if (found == beforePieces.size())
        {
            const std::uint32_t start = grid.Take(piece, lookOfAfter[LookOf(piece)], agrees);
            if (start == PieceGrid::kNone)
                return false;
            found = start;
        }
        isFree[found] = false;
        expected = found + 1;
        return true;
    };
    std::erase_if(after, [&](std::uint32_t index) { return take(afterPieces[index]); });
    std::erase_if(before, [&](std::uint32_t index) { return !isFree[index]; });
}

std::vector<PiecePair> MatchPieces(const std::vector<Piece>& beforePieces, const std::vector<Piece>& afterPieces,
                                   const std::vector<int>& lookOfBefore, const std::vector<int>& lookOfAfter,
                                   const PieceTolerance& tolerance, std::vector<std::uint32_t>& before,
                                   std::vector<std::uint32_t>& after)
{
    PieceGrid grid(beforePieces, lookOfBefore, tolerance, before);
    std::vector<PiecePair> pairs;
    std::vector<std::uint32_t> unmatched;
    for (const std::uint32_t index : after)
    {
        const Piece& piece = afterPieces[index];
        const auto agrees = [&](std::uint32_t candidate, double position) {
            return Agree(beforePieces[candidate], piece, lookOfBefore, lookOfAfter, tolerance, position);
        };
        const std::uint32_t found = grid.Take(piece, lookOfAfter[LookOf(piece)], agrees);
        if (found == PieceGrid::kNone)
            unmatched.push_back(index);
        else if (tolerance.placeOnly)
            pairs.push_back({found, index});
    }
    before = grid.Left();
    after = std::move(unmatched);
    return pairs;
}

}  // namespace Sceneprep
