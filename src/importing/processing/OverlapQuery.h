#pragma once

#include <importing/math/Box.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Importing
{

/// Finds the boxes that overlap a given box, with exactly the results of Overlap(), without comparing all of them.
///
/// Inverted and infinite boxes are allowed. A NaN bound is treated as infinite, because it never separates boxes.
///
/// Cost: n log n to build, linear memory. For boxes that are spread out and not much longer than wide, a query costs
/// log n plus the number of boxes found; many long, thin boxes make it more expensive, up to n.
class OverlapQuery
{
public:
    /// Builds the hierarchy over a list of boxes, which are numbered by their position.
    explicit OverlapQuery(const std::vector<Box>& boxes);

    /// Writes the numbers of the boxes that overlap a box, in ascending order.
    void Find(const Box& box, std::vector<std::uint32_t>& found);

private:
    static constexpr std::uint32_t kWidth = 8;
    static constexpr std::size_t kSides = 6;

    /// Up to eight boxes, stored by side so that they are compared together. The sides are the ranks of minimum x, y, z
    /// and the complements of the ranks of maximum x, y, z: lower values mean a larger box.
    using Block = std::array<std::array<std::int32_t, kWidth>, kSides>;
    /// The largest values that the six sides of a box may have if it overlaps the given box.
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

    std::vector<std::uint32_t> numbers_;  ///< [N] the numbers of the boxes in the order of the lowest level
    std::vector<Level> levels_;           ///< place p of block b of a level bounds block 8b + p of the level below
    std::vector<Place> pending_;          ///< blocks that a query still has to compare
    std::vector<std::uint64_t> marks_;    ///< one bit for each box; all 0 between queries
};

}  // namespace Importing
