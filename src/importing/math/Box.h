#pragma once

#include <importing/math/D3DXMath.h>

#include <array>

namespace Importing
{

/// An axis-aligned box. It is empty while min lies above max.
struct Box
{
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
};

/// The box that holds nothing: min is the largest float on every axis, max its negation.
Box EmptyBox();

/// The eight corners: every combination of the components of min and max.
std::array<D3DXVECTOR3, 8> Corners(const Box& box);

/// Extends a box by a point. Comparisons are strict; a NaN is absent.
inline void Extend(Box& box, const D3DXVECTOR3& point)
{
    const auto extend = [](float& min, float& max, float value) {
        if (value < min)
            min = value;
        if (value > max)
            max = value;
    };
    extend(box.min.x, box.max.x, point.x);
    extend(box.min.y, box.max.y, point.y);
    extend(box.min.z, box.max.z, point.z);
}

/// Extends a box by the corners of a local box, each carried by the matrix.
void Extend(Box& box, const Box& localBox, const D3DXMATRIX& matrix);

/// False when on one of the axes one box ends before the other begins. Boxes that only touch overlap; a NaN separates
/// nothing.
bool Overlap(const Box& a, const Box& b);

}  // namespace Importing
