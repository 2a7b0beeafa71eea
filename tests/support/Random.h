#pragma once

#include <cstdint>

namespace Support
{

/// Pseudo-random numbers that are the same on every platform, by one 64-bit step and mix for each number.
class Random
{
public:
    explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ULL + 0x2545F4914F6CDD1DULL) {}

    std::uint32_t Next()
    {
        state_ += 0x9E3779B97F4A7C15ULL;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
        return static_cast<std::uint32_t>(mixed >> 32U);
    }

    /// Returns a number from 0 to count - 1; count must not be 0.
    std::uint32_t Below(std::uint32_t count) { return Next() % count; }

    bool OneIn(std::uint32_t count) { return Below(count) == 0; }

    /// Returns a number from min up to, but not including, max. All bits of the mantissa vary.
    float Between(float min, float max) { return min + (max - min) * (static_cast<float>(Next() >> 8U) / 16777216.0F); }

private:
    std::uint64_t state_;
};

}  // namespace Support
