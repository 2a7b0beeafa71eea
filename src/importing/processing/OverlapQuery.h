#pragma once

#include <importing/math/Box.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Importing
{

/// Finds the boxes that overlap a box, by the six comparisons of Overlap(), without asking all of them.
///
/// A hierarchy of blocks of eight: each block keeps the smallest minimum and the largest maximum of what lies below it,
/// so that whenever a block is separated from a box, all below it are too. Inverted and infinite boxes are no
/// exception; a coordinate that is no number counts as beyond all others, since it separates nothing. Cost: n log n to
/// build; log n plus the number found for a query among boxes that are spread out and not much longer than wide. Many
/// long thin boxes make queries dearer.
class OverlapQuery
{
public:
    explicit OverlapQuery(const std::vector<Box>& boxes);

    /// Writes the numbers of the boxes that overlap a box, ascending.
    void Find(const Box& box, std::vector<std::uint32_t>& found);

private:
    static constexpr std::uint32_t kWidth = 8;
    static constexpr std::size_t kSides = 6;

    /// Up to eight boxes, side by side, so that they are compared together. Of each the ranks of minimum x, y and z,
    /// then the complements of the ranks of maximum x, y and z: the lower, the further the box reaches.
    using Block = std::array<std::array<std::int32_t, kWidth>, kSides>;
    /// What all six of a box have to stay below or reach, to overlap a certain box.
    using Limits = std::array<std::int32_t, kSides>;
    using Level = std::vector<Block>;

    struct Place
    {
        std::uint32_t level;
        std::uint32_t block;
    };

    static Limits LimitsOf(const Box& box);
    static std::uint32_t Overlapping(const Block& block, const Limits& limits);
    static Level LevelAbove(const Level& level);
    void SortAscending(std::vector<std::uint32_t>& found);

    std::vector<std::uint32_t> numbers_;  ///< [N] of the boxes, as they stand in the lowest level
    std::vector<Level> levels_;           ///< block b of a level bounds blocks 8b to 8b + 7 of the level below it
    std::vector<Place> pending_;
    std::vector<std::uint64_t> marks_;  ///< one bit for each box; all clear between queries
};

}  // namespace Importing
