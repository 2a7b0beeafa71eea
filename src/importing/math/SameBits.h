#pragma once

#include <importing/math/D3DXMath.h>

#include <array>
#include <bit>
#include <cstdint>

namespace Importing
{

/// True when all 64 bytes of two matrices agree; +0 and -0 differ, and a NaN agrees with itself.
inline bool SameBits(const D3DXMATRIX& a, const D3DXMATRIX& b)
{
    using Bits = std::array<std::uint32_t, 16>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

}  // namespace Importing
