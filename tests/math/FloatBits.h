#pragma once

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

namespace Support
{

/// Returns the bits of a float.
inline std::uint32_t Bits(float value) { return std::bit_cast<std::uint32_t>(value); }

/// Returns the float with these bits.
inline float FromBits(std::uint32_t bits) { return std::bit_cast<float>(bits); }

/// Returns the floats of a value that consists only of floats.
template <typename Value>
auto Floats(const Value& value)
{
    static_assert(std::is_trivially_copyable_v<Value> && sizeof(Value) % sizeof(float) == 0);
    constexpr std::size_t kCount = sizeof(Value) / sizeof(float);  // NOLINT(bugprone-sizeof-expression)
    std::array<float, kCount> floats;
    std::memcpy(floats.data(), &value, sizeof(Value));
    return floats;
}

/// Returns floats in hexadecimal form, separated by blanks.
template <typename Value>
std::string HexText(const Value& value)
{
    std::string text;
    for (const float number : Floats(value))
    {
        char buffer[40];
        std::snprintf(buffer, sizeof(buffer), "%a", static_cast<double>(number));
        if (!text.empty())
            text += ' ';
        text += buffer;
    }
    return text;
}

/// EXPECT_TRUE(SameBitsOrNaN(actual, expected)): every float has the same bits; all NaNs are equal.
template <typename Value>
testing::AssertionResult SameBitsOrNaN(const Value& actual, const Value& expected)
{
    const auto a = Floats(actual);
    const auto b = Floats(expected);
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Bits(a[i]) != Bits(b[i]) && !(std::isnan(a[i]) && std::isnan(b[i])))
            return testing::AssertionFailure()
                   << "float " << i << " differs: " << HexText(actual) << " instead of " << HexText(expected);
    return testing::AssertionSuccess();
}

/// EXPECT_TRUE(NearFloats(actual, expected, tolerance)): no float differs by more than the tolerance.
template <typename Value>
testing::AssertionResult NearFloats(const Value& actual, const Value& expected, float tolerance)
{
    const auto a = Floats(actual);
    const auto b = Floats(expected);
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!(std::abs(a[i] - b[i]) <= tolerance))
            return testing::AssertionFailure()
                   << "float " << i << " is too far away: " << HexText(actual) << " instead of " << HexText(expected);
    return testing::AssertionSuccess();
}

}  // namespace Support
