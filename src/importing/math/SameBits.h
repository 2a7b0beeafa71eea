#pragma once

#include <importing/math/D3DXMath.h>

#include <array>
#include <bit>
#include <cstdint>

namespace Importing
{

/// Returns whether all 64 bytes of two matrices are equal: +0 and -0 differ, and equal NaN patterns are equal.
inline bool SameBits(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    using Bits = std::array<std::uint32_t, 16>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

}  // namespace Importing
