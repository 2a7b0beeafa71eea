#include <sceneprep/compare/ContentDigest.h>

#include <fmt/format.h>

#include <cstdint>
#include <cstring>

namespace Sceneprep
{

namespace
{

/// Mixes eight bytes at a time into two independent sums.
class TwoSums
{
public:
    void Add(std::uint64_t word)
    {
        first_ = Mixed(first_ ^ word, 0x9E3779B97F4A7C15ULL);
        second_ = Mixed(second_ + word, 0xC2B2AE3D27D4EB4FULL);
    }

    std::string Text(std::size_t size) const { return fmt::format("{}-{:016x}{:016x}", size, first_, second_); }

private:
    static std::uint64_t Mixed(std::uint64_t value, std::uint64_t factor)
    {
        value *= factor;
        return value ^ (value >> 29U);
    }

    std::uint64_t first_ = 0x243F6A8885A308D3ULL;
    std::uint64_t second_ = 0x13198A2E03707344ULL;
};

}  // namespace

std::string ContentDigest(const void* data, std::size_t size)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    TwoSums sums;
    std::size_t i = 0;
    for (; i + 8 <= size; i += 8)
    {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes + i, 8);
        sums.Add(word);
    }
    std::uint64_t rest = 0;
    if (i < size)
        std::memcpy(&rest, bytes + i, size - i);
    sums.Add(rest);
    sums.Add(size);
    return sums.Text(size);
}

}  // namespace Sceneprep
