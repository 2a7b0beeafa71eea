#include <importing/processing/OverlapQuery.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace Importing
{
namespace
{

constexpr std::uint32_t kLeafSize = 4;

/// A coordinate that is no number separates nothing, so it counts as beyond all others.
float NumberOr(float value, float beyond) { return std::isnan(value) ? beyond : value; }

void Include(Box& bounds, const Box& box)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    bounds.min.x = std::min(bounds.min.x, NumberOr(box.min.x, -kInfinity));
    bounds.min.y = std::min(bounds.min.y, NumberOr(box.min.y, -kInfinity));
    bounds.min.z = std::min(bounds.min.z, NumberOr(box.min.z, -kInfinity));
    bounds.max.x = std::max(bounds.max.x, NumberOr(box.max.x, kInfinity));
    bounds.max.y = std::max(bounds.max.y, NumberOr(box.max.y, kInfinity));
    bounds.max.z = std::max(bounds.max.z, NumberOr(box.max.z, kInfinity));
}

/// Twice the centre of a box along an axis; 0 where it has none, as from -infinity to infinity.
float CenterKey(float min, float max)
{
    const float sum = min + max;
    return NumberOr(sum, 0.0F);
}

float CenterKey(const Box& box, int axis)
{
    switch (axis)
    {
        case 0:
            return CenterKey(box.min.x, box.max.x);
        case 1:
            return CenterKey(box.min.y, box.max.y);
        default:
            return CenterKey(box.min.z, box.max.z);
    }
}

}  // namespace

OverlapQuery::OverlapQuery(std::vector<Box> boxes) : boxes_(std::move(boxes)), order_(boxes_.size())
{
    std::iota(order_.begin(), order_.end(), 0U);
    nodes_.reserve(boxes_.size());
    if (!boxes_.empty())
        Build(0, static_cast<std::uint32_t>(boxes_.size()));
}

/// Recursion is as deep as the logarithm of the number of boxes, since every split is one in halves.
std::uint32_t OverlapQuery::Build(std::uint32_t begin, std::uint32_t end)
{
    const auto node = static_cast<std::uint32_t>(nodes_.size());
    nodes_.push_back({BoundsOf(begin, end), begin, end, 0});
    if (end - begin > kLeafSize)
    {
        const std::uint32_t middle = begin + (end - begin) / 2;
        SplitInHalves(begin, middle, end);
        Build(begin, middle);
        const std::uint32_t second = Build(middle, end);
        nodes_[node].secondChild = second;
    }
    return node;
}

Box OverlapQuery::BoundsOf(std::uint32_t begin, std::uint32_t end) const
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    Box bounds{D3DXVECTOR3(kInfinity, kInfinity, kInfinity), D3DXVECTOR3(-kInfinity, -kInfinity, -kInfinity)};
    for (std::uint32_t i = begin; i < end; ++i)
        Include(bounds, boxes_[order_[i]]);
    return bounds;
}

/// Along the axis on which the centres lie furthest apart.
void OverlapQuery::SplitInHalves(std::uint32_t begin, std::uint32_t middle, std::uint32_t end)
{
    int widest = 0;
    float width = -1.0F;
    for (int axis = 0; axis < 3; ++axis)
    {
        const auto [least, greatest] = std::minmax_element(
            order_.begin() + begin, order_.begin() + end,
            [&](std::uint32_t a, std::uint32_t b) { return CenterKey(boxes_[a], axis) < CenterKey(boxes_[b], axis); });
        const float extent = CenterKey(boxes_[*greatest], axis) - CenterKey(boxes_[*least], axis);
        if (extent > width)
        {
            width = extent;
            widest = axis;
        }
    }
    std::nth_element(
        order_.begin() + begin, order_.begin() + middle, order_.begin() + end,
        [&](std::uint32_t a, std::uint32_t b) { return CenterKey(boxes_[a], widest) < CenterKey(boxes_[b], widest); });
}

void OverlapQuery::Find(const Box& box, std::vector<std::uint32_t>& found)
{
    found.clear();
    if (nodes_.empty())
        return;
    pending_.assign(1, 0);
    while (!pending_.empty())
    {
        const std::uint32_t index = pending_.back();
        const Tree& node = nodes_[index];
        pending_.pop_back();
        if (!Overlap(box, node.bounds))
            continue;
        if (node.secondChild != 0)
        {
            pending_.push_back(node.secondChild);
            pending_.push_back(index + 1);
            continue;
        }
        for (std::uint32_t i = node.begin; i < node.end; ++i)
            if (Overlap(box, boxes_[order_[i]]))
                found.push_back(order_[i]);
    }
    std::sort(found.begin(), found.end());
}

}  // namespace Importing
