#pragma once

#include <pictures/Camera.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Pictures
{

/// The shares of three corners in a point of their triangle.
using Shares = std::array<float, 3>;

/// Calls visit(x, y, shares) for every pixel of a width x height image whose centre lies in the triangle or on its rim.
template <typename Visit>
void ScanTriangle(const std::array<ScreenPoint, 3>& p, int width, int height, Visit visit)
{
    const auto edge = [](const ScreenPoint& a, const ScreenPoint& b, float x, float y) {
        return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
    };
    const float area = edge(p[0], p[1], p[2].x, p[2].y);
    if (area == 0.0F || !std::isfinite(area))
        return;

    const auto clampTo = [](float value, int limit) {
        return static_cast<int>(std::clamp(value, -1.0F, static_cast<float>(limit)));
    };
    const int left = std::max(0, clampTo(std::floor(std::min({p[0].x, p[1].x, p[2].x})), width));
    const int right = std::min(width - 1, clampTo(std::ceil(std::max({p[0].x, p[1].x, p[2].x})), width));
    const int top = std::max(0, clampTo(std::floor(std::min({p[0].y, p[1].y, p[2].y})), height));
    const int bottom = std::min(height - 1, clampTo(std::ceil(std::max({p[0].y, p[1].y, p[2].y})), height));
    for (int row = top; row <= bottom; ++row)
    {
        for (int column = left; column <= right; ++column)
        {
            const float x = static_cast<float>(column) + 0.5F;
            const float y = static_cast<float>(row) + 0.5F;
            const Shares shares = {edge(p[1], p[2], x, y) / area, edge(p[2], p[0], x, y) / area,
                                   edge(p[0], p[1], x, y) / area};
            if (shares[0] >= 0 && shares[1] >= 0 && shares[2] >= 0)
                visit(column, row, shares);
        }
    }
}

}  // namespace Pictures
