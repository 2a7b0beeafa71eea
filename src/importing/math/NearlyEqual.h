#pragma once

#include <bit>
#include <cstdint>

namespace Importing
{

/// Masks the bits of a float that are content: all but the lowest 8 bits of the mantissa.
inline constexpr std::uint32_t kSignificantFloatBits = 0xFFFFFF00U;

/// Returns whether two floats have the same bits, apart from the lowest 8.
///
/// The comparison uses the same mask as content hashes. So +0 and -0 differ, two NaNs may be equal, and two adjacent
/// floats differ where the masked bits change between them.
constexpr bool NearlyEqual(float a, float b)
{
    return ((std::bit_cast<std::uint32_t>(a) ^ std::bit_cast<std::uint32_t>(b)) & kSignificantFloatBits) == 0;
}

}  // namespace Importing
