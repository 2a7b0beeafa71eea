#pragma once

#include <array>
#include <cmath>

namespace Pipeline
{

/// A vector or a position in double precision, for sums over whole scenes and for decompositions of matrices.
using Vector3 = std::array<double, 3>;

inline Vector3 Minus(const Vector3& a, const Vector3& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

inline double Dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

inline double Length(const Vector3& v) { return std::sqrt(Dot(v, v)); }

inline Vector3 Cross(const Vector3& a, const Vector3& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace Pipeline
