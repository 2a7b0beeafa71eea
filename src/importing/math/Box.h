#pragma once

#include <importing/math/D3DXMath.h>

#include <array>

namespace Importing
{

/// An axis-aligned box. It is empty where min is above max.
struct Box
{
    D3DXVECTOR3 min;
    D3DXVECTOR3 max;
};

/// Returns the empty box that extending starts from: on every axis min is the largest float and max its negation.
Box EmptyBox();

/// Returns the eight corners: every combination of the components of min and max.
std::array<D3DXVECTOR3, 8> Corners(const Box& box);

/// Extends a box so that it contains a point. A coordinate that is NaN changes nothing.
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

/// Extends a box so that it contains the eight corners of a local box, transformed by the matrix.
void Extend(Box& box, const Box& localBox, const D3DXMATRIX& matrix);

/// Returns whether two boxes overlap: false when on one of the axes one box ends before the other begins. Boxes that
/// only touch overlap. A NaN bound never separates two boxes.
bool Overlap(const Box& a, const Box& b);

}  // namespace Importing
