#pragma once

#include <bit>
#include <cstdint>

namespace Importing
{

/// The bits of a float that count for content: the lowest 8 bits of the mantissa do not.
inline constexpr std::uint32_t kSignificantFloatBits = 0xFFFFFF00U;

/// True when two floats agree in all bits but the lowest 8.
///
/// The test is one of bit patterns, the same that content hashes apply: +0 and -0 differ, and two NaNs may agree.
/// Values on either side of a mask boundary differ even when they are neighbours.
constexpr bool NearlyEqual(float a, float b)
{
    return ((std::bit_cast<std::uint32_t>(a) ^ std::bit_cast<std::uint32_t>(b)) & kSignificantFloatBits) == 0;
}

}  // namespace Importing
