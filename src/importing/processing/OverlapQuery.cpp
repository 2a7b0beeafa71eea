// A bounding volume hierarchy with eight children per block. Each place of a block stores the smallest minimum and the
// largest maximum of everything below it; if a place is separated from the given box, so is everything below it. The
// items are arranged by splitting them at the median of the side that varies most, so that close boxes share a block.
//
// Bounds are stored as integers in the order of the floats. Then all six comparisons are of the form "side <= limit",
// and the compiler compares the eight places of a block at once. A sweep along one axis would be simpler, but degrades
// to quadratic time when many boxes overlap on that axis, as the parts of a building do; a grid depends on the box
// sizes. Results are needed in list order, so a query sorts what it finds, or marks it in a bit set when it is much.

#include <importing/processing/OverlapQuery.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace Importing
{
namespace
{

constexpr std::size_t kBitsAMark = 64;
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// The minimum on each axis, then the maximum on each. A NaN bound is replaced by an infinite one.
using Sides = std::array<float, 6>;

struct Item
{
    Sides sides;
    std::uint32_t number;
};
using ItemIterator = std::vector<Item>::iterator;

float NumberOr(float value, float beyond) { return std::isnan(value) ? beyond : value; }

Sides SidesOf(const Box& box)
{
    return {NumberOr(box.min.x, -kInfinity), NumberOr(box.min.y, -kInfinity), NumberOr(box.min.z, -kInfinity),
            NumberOr(box.max.x, kInfinity),  NumberOr(box.max.y, kInfinity),  NumberOr(box.max.z, kInfinity)};
}

/// Returns the side that varies most among the items.
std::size_t WidestSide(ItemIterator begin, ItemIterator end)
{
    Sides low = begin->sides;
    Sides high = begin->sides;
    for (ItemIterator item = begin; item != end; ++item)
    {
        for (std::size_t side = 0; side < low.size(); ++side)
        {
            low[side] = std::min(low[side], item->sides[side]);
            high[side] = std::max(high[side], item->sides[side]);
        }
    }

    std::size_t widest = 0;
    float width = 0.0F;
    for (std::size_t side = 0; side < low.size(); ++side)
    {
        const float candidate = high[side] - low[side];
        if (candidate > width)
        {
            width = candidate;
            widest = side;
        }
    }
    return widest;
}

/// Sorts the items so that close boxes are close in the list: splits them in two along the side that varies most, and
/// recurses into both parts. Each part but the last fills whole blocks. The recursion depth is log2 of the item count.
void Arrange(ItemIterator begin, ItemIterator end, std::ptrdiff_t width)
{
    const std::ptrdiff_t count = end - begin;
    if (count <= width)
        return;
    std::ptrdiff_t blockSize = width;
    while (blockSize * width < count)
        blockSize *= width;
    const std::ptrdiff_t blocks = (count + blockSize - 1) / blockSize;
    const ItemIterator middle = begin + blocks / 2 * blockSize;

    const std::size_t side = WidestSide(begin, end);
    std::nth_element(begin, middle, end,
                     [side](const Item& a, const Item& b) { return a.sides[side] < b.sides[side]; });
    Arrange(begin, middle, width);
    Arrange(middle, end, width);
}

/// Returns an integer for each float, in the same order. Both zeros have the same integer.
std::int32_t Rank(float value)
{
    const auto bits = std::bit_cast<std::int32_t>(value + 0.0F);
    return bits < 0 ? bits ^ std::numeric_limits<std::int32_t>::max() : bits;
}

/// Returns a block without boxes. Its sides are above the rank of infinity, so nothing overlaps them.
template <typename Block>
Block EmptyBlock()
{
    Block block;
    for (auto& side : block)
        side.fill(std::numeric_limits<std::int32_t>::max());
    return block;
}

}  // namespace

OverlapQuery::OverlapQuery(const std::vector<Box>& boxes) : marks_(boxes.size() / kBitsAMark + 1)
{
    std::vector<Item> items;
    items.reserve(boxes.size());
    for (const Box& box : boxes)
        items.push_back({SidesOf(box), static_cast<std::uint32_t>(items.size())});
    Arrange(items.begin(), items.end(), kWidth);

    Level lowest((items.size() + kWidth - 1) / kWidth, EmptyBlock<Block>());
    numbers_.reserve(items.size());
    for (const Item& item : items)
    {
        Block& block = lowest[numbers_.size() / kWidth];
        for (std::size_t side = 0; side < kSides; ++side)
        {
            const std::int32_t rank = Rank(item.sides[side]);
            block[side][numbers_.size() % kWidth] = side < kSides / 2 ? rank : ~rank;
        }
        numbers_.push_back(item.number);
    }
    levels_.push_back(std::move(lowest));
    while (levels_.back().size() > 1)
        levels_.push_back(LevelAbove(levels_.back()));
}

OverlapQuery::Level OverlapQuery::LevelAbove(const Level& level)
{
    Level above((level.size() + kWidth - 1) / kWidth, EmptyBlock<Block>());
    for (std::size_t block = 0; block < level.size(); ++block)
        for (std::size_t side = 0; side < kSides; ++side)
            above[block / kWidth][side][block % kWidth] =
                *std::min_element(level[block][side].begin(), level[block][side].end());
    return above;
}

OverlapQuery::Limits OverlapQuery::LimitsOf(const Box& box)
{
    const Sides sides = SidesOf(box);
    return {Rank(sides[3]), Rank(sides[4]), Rank(sides[5]), ~Rank(sides[0]), ~Rank(sides[1]), ~Rank(sides[2])};
}

/// Returns one bit for each place of the block that is within the limits. All comparisons are made, without branches,
/// so that the compiler compares several places at once.
std::uint32_t OverlapQuery::Overlapping(const Block& block, const Limits& limits)
{
    std::array<std::int32_t, kWidth> isSeparated;
    for (std::size_t place = 0; place < kWidth; ++place)
    {
        const auto isBeyond = [&](std::size_t side) { return block[side][place] > limits[side] ? -1 : 0; };
        isSeparated[place] = isBeyond(0) | isBeyond(1) | isBeyond(2) | isBeyond(3) | isBeyond(4) | isBeyond(5);
    }

    std::uint32_t overlapping = 0;
    for (std::uint32_t place = 0; place < kWidth; ++place)
        overlapping |= ~static_cast<std::uint32_t>(isSeparated[place]) & (1U << place);
    return overlapping;
}

void OverlapQuery::Find(const Box& box, std::vector<std::uint32_t>& found)
{
    found.clear();
    if (numbers_.empty())
        return;
    const Limits limits = LimitsOf(box);
    pending_.assign(1, {static_cast<std::uint32_t>(levels_.size() - 1), 0});
    while (!pending_.empty())
    {
        const Place place = pending_.back();
        pending_.pop_back();
        std::uint32_t overlapping = Overlapping(levels_[place.level][place.block], limits);
        for (; overlapping != 0; overlapping &= overlapping - 1)
        {
            const auto lowest = static_cast<std::uint32_t>(std::countr_zero(overlapping));
            const std::uint32_t below = place.block * kWidth + lowest;
            if (place.level > 0)
                pending_.push_back({place.level - 1, below});
            else
                found.push_back(numbers_[below]);
        }
    }
    SortAscending(found);
}

/// Sorts the numbers: a few by comparison, many by marking them in a bit set and reading it in order.
void OverlapQuery::SortAscending(std::vector<std::uint32_t>& found)
{
    if (found.size() < marks_.size())
    {
        std::sort(found.begin(), found.end());
        return;
    }
    for (const std::uint32_t number : found)
        marks_[number / kBitsAMark] |= std::uint64_t{1} << (number % kBitsAMark);
    found.clear();
    for (std::size_t word = 0; word < marks_.size(); ++word)
    {
        for (std::uint64_t bits = marks_[word]; bits != 0; bits &= bits - 1)
            found.push_back(static_cast<std::uint32_t>(word * kBitsAMark) +
                            static_cast<std::uint32_t>(std::countr_zero(bits)));
        marks_[word] = 0;
    }
}

}  // namespace Importing
