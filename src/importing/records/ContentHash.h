#pragma once

#include <importing/math/D3DXMath.h>
#include <importing/math/NearlyEqual.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Importing
{

class Transform;

/// The 32-bit digest of a run of bytes.
///
/// On Windows it is the platform's HashData; elsewhere a function of our own, the same on every platform. Digests are
/// meant for comparison within one run. data must not be null, also when size is 0.
std::uint32_t Digest(const void* data, std::size_t size);

#if defined(_WIN32)

/// The digest of the four bytes of a number.
inline std::uint32_t Digest(std::uint32_t word) { return Digest(&word, sizeof(word)); }

#else

namespace DigestSteps
{

/// A bijection of 32 bits in which every input bit reaches every output bit: two rounds of multiplication and shift,
/// with the constants of low bias that Chris Wellons found by search (nullprogram.com, "Prospecting for Hash
/// Functions", 2018).
constexpr std::uint32_t Mix(std::uint32_t x)
{
    x ^= x >> 16U;
    x *= 0x7FEB352DU;
    x ^= x >> 15U;
    x *= 0x846CA68BU;
    x ^= x >> 16U;
    return x;
}

/// Where a digest starts: the length comes first, so that a run of zero bytes differs from a longer one.
constexpr std::uint32_t Start(std::size_t size) { return static_cast<std::uint32_t>(size) * 0x9E3779B9U + 0x85EBCA77U; }

/// Takes the next four bytes in, as a little-endian number.
constexpr std::uint32_t Next(std::uint32_t state, std::uint32_t word) { return Mix(state ^ word); }

}  // namespace DigestSteps

/// The digest of the four bytes of a number. A bijection: digests of different numbers differ.
constexpr std::uint32_t Digest(std::uint32_t word) { return DigestSteps::Next(DigestSteps::Start(sizeof(word)), word); }

#endif

/// Folds the digests of a record's fields, in the order in which they are added, into the record's content hash.
///
/// The fold starts at 0, and every field turns h into h x 31 XOR digest, in wrapping 32-bit arithmetic.
class ContentHash
{
public:
    /// Adds a float without its lowest 8 bits, so that nearly equal values count as the same content.
    ContentHash& Add(float value) { return Add(std::bit_cast<std::uint32_t>(value) & kSignificantFloatBits); }
    /// Adds four floats in the order alpha, red, green, blue.
    ContentHash& Add(const D3DXCOLOR& color) { return Add(color.a).Add(color.r).Add(color.g).Add(color.b); }
    /// Adds x, y, z.
    ContentHash& Add(const D3DXVECTOR3& vector) { return Add(vector.x).Add(vector.y).Add(vector.z); }
    /// Adds 16 floats, row by row.
    ContentHash& Add(const D3DXMATRIX& matrix);
    /// Adds the characters, without a terminator, as one digest.
    ContentHash& Add(const std::string& text);
    /// Adds the form in which the placement is stored as one digest, nothing masked: the same placement stored as a
    /// matrix and as angles counts as different content.
    ContentHash& Add(const Transform& transform);
    ContentHash& Add(bool value);
    ContentHash& Add(std::int32_t value) { return Add(static_cast<std::uint32_t>(value)); }
    ContentHash& Add(std::uint32_t value) { return Fold(Digest(value)); }
    ContentHash& Add(std::uint64_t value);
    /// Adds a run of bytes as it stands, as one digest.
    ContentHash& AddBytes(const void* data, std::size_t size);

    std::uint32_t Value() const { return value_; }

private:
    ContentHash& Fold(std::uint32_t digest)
    {
        value_ = value_ * 31U ^ digest;
        return *this;
    }

    std::uint32_t value_ = 0;
};

}  // namespace Importing
