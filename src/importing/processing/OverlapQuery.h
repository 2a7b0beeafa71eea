#pragma once

#include <importing/math/Box.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Importing
{

/// Finds the boxes that overlap a box, by the six comparisons of Overlap(), without asking all of them.
///
/// A hierarchy of boxes over the given ones: each node keeps the smallest minimum and the largest maximum of what lies
/// below it, so that whenever a node is separated from a box, all below it are too. Inverted and infinite boxes are no
/// exception; a coordinate that is no number counts as beyond all others there, since it separates nothing.
/// Cost: n log n to build; log n plus the number found for a query among boxes that are spread out and not much longer
/// than wide. Many long thin boxes make queries dearer.
class OverlapQuery
{
public:
    explicit OverlapQuery(std::vector<Box> boxes);

    /// Writes the numbers of the boxes that overlap a box, ascending.
    void Find(const Box& box, std::vector<std::uint32_t>& found);

private:
    struct Tree
    {
        Box bounds;
        std::uint32_t begin;
        std::uint32_t end;
        std::uint32_t secondChild;  ///< 0 for a leaf; the first child follows its parent
    };

    std::uint32_t Build(std::uint32_t begin, std::uint32_t end);
    Box BoundsOf(std::uint32_t begin, std::uint32_t end) const;
    void SplitInHalves(std::uint32_t begin, std::uint32_t middle, std::uint32_t end);

    std::vector<Box> boxes_;
    std::vector<std::uint32_t> order_;
    std::vector<Tree> nodes_;
    std::vector<std::uint32_t> pending_;
};

}  // namespace Importing
