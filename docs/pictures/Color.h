#pragma once

#include <cstddef>
#include <cstdint>

namespace Pictures
{

/// Red, green, blue from 0 to 1, as they are shown.
struct Color
{
    float r = 0;
    float g = 0;
    float b = 0;

    friend constexpr Color operator+(const Color& x, const Color& y) { return {x.r + y.r, x.g + y.g, x.b + y.b}; }
    friend constexpr Color operator*(const Color& x, float s) { return {x.r * s, x.g * s, x.b * s}; }
};

/// @return the color 0xRRGGBB.
constexpr Color FromHex(std::uint32_t rgb)
{
    return {static_cast<float>((rgb >> 16U) & 0xFFU) / 255.0F, static_cast<float>((rgb >> 8U) & 0xFFU) / 255.0F,
            static_cast<float>(rgb & 0xFFU) / 255.0F};
}

/// @return a at share 0, b at share 1.
constexpr Color Mix(const Color& a, const Color& b, float share) { return a * (1 - share) + b * share; }

inline constexpr Color kPaper = FromHex(0xFAF8F4);
inline constexpr Color kInk = FromHex(0x3A424E);
inline constexpr Color kSand = FromHex(0xE6CFA2);
inline constexpr Color kTeal = FromHex(0x4E9290);
inline constexpr Color kRust = FromHex(0xC8603F);
inline constexpr Color kSky = FromHex(0x7C9CC4);
inline constexpr Color kSage = FromHex(0x93B07F);
inline constexpr Color kPlum = FromHex(0x94739C);
inline constexpr Color kStone = FromHex(0xC9C4BA);

/// @return one of many muted colors; neighbouring numbers look different.
Color DistinctColor(std::size_t number);

}  // namespace Pictures
