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

/// Returns the 32-bit digest of a sequence of bytes. data must not be null, even when size is 0.
///
/// On Windows the digest is the platform's HashData; elsewhere it is a function of this library, the same on every such
/// platform. Compare digests only within one run of a program.
/// Cost: linear in size.
std::uint32_t Digest(const void* data, std::size_t size);

#if defined(_WIN32)

/// Returns the digest of the four bytes of a number.
inline std::uint32_t Digest(std::uint32_t word) { return Digest(&word, sizeof(word)); }

#else

namespace DigestSteps
{

/// Mixes 32 bits so that every input bit affects every output bit. The mapping is a bijection: two rounds of shift and
/// multiplication, with the low-bias constants that Chris Wellons found by search (nullprogram.com, "Prospecting for
/// Hash Functions", 2018).
constexpr std::uint32_t Mix(std::uint32_t x)
{
    x ^= x >> 16U;
    x *= 0x7FEB352DU;
    x ^= x >> 15U;
    x *= 0x846CA68BU;
    x ^= x >> 16U;
    return x;
}

/// Returns the start state of a digest. It depends on the length, so sequences of zero bytes of different lengths
/// differ.
constexpr std::uint32_t Start(std::size_t size) { return static_cast<std::uint32_t>(size) * 0x9E3779B9U + 0x85EBCA77U; }

/// Returns the state after the next four bytes, given as a little-endian number.
constexpr std::uint32_t Next(std::uint32_t state, std::uint32_t word) { return Mix(state ^ word); }

}  // namespace DigestSteps

/// Returns the digest of the four bytes of a number. The mapping is a bijection: different numbers have different
/// digests.
constexpr std::uint32_t Digest(std::uint32_t word) { return DigestSteps::Next(DigestSteps::Start(sizeof(word)), word); }

#endif

/// Computes the content hash of a record from the digests of its fields, in the order in which they are added.
///
/// The hash h starts at 0, and every field replaces h by h x 31 XOR digest, in wrapping 32-bit arithmetic.
class ContentHash
{
public:
    /// Adds a float without its lowest 8 bits, so that nearly equal values are the same content.
    ContentHash& Add(float value) { return Add(std::bit_cast<std::uint32_t>(value) & kSignificantFloatBits); }
    /// Adds four floats in the order alpha, red, green, blue.
    ContentHash& Add(const D3DXCOLOR& color) { return Add(color.a).Add(color.r).Add(color.g).Add(color.b); }
    /// Adds x, y, z.
    ContentHash& Add(const D3DXVECTOR3& vector) { return Add(vector.x).Add(vector.y).Add(vector.z); }
    /// Adds 16 floats, row by row.
    ContentHash& Add(const D3DXMATRIX& matrix);
    /// Adds the characters without a terminator, as one digest.
    ContentHash& Add(const std::string& text);
    /// Adds the stored form of a transform as one digest, without masking. The same transform stored as a matrix and as
    /// angles is different content.
    ContentHash& Add(const Transform& transform);
    ContentHash& Add(bool value);
    ContentHash& Add(std::int32_t value) { return Add(static_cast<std::uint32_t>(value)); }
    ContentHash& Add(std::uint32_t value) { return Fold(Digest(value)); }
    ContentHash& Add(std::uint64_t value);
    /// Adds a sequence of bytes unchanged, as one digest.
    ContentHash& AddBytes(const void* data, std::size_t size);

    /// Returns the hash of all fields added so far.
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
