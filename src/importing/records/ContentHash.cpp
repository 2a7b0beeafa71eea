#include <importing/records/ContentHash.h>

#include <importing/math/NearlyEqual.h>
#include <importing/records/Transform.h>

#include <bit>

#if defined(_WIN32)
#include <windows.h>

#include <shlwapi.h>
#endif

namespace Importing
{

#if defined(_WIN32)

std::uint32_t Digest(const void* data, std::size_t size)
{
    // HashData takes the input as a pointer to non-const bytes, and only reads them.
    BYTE output[4] = {};
    HashData(static_cast<BYTE*>(const_cast<void*>(data)), static_cast<DWORD>(size), output, sizeof(output));
    return static_cast<std::uint32_t>(output[0]) | static_cast<std::uint32_t>(output[1]) << 8U |
           static_cast<std::uint32_t>(output[2]) << 16U | static_cast<std::uint32_t>(output[3]) << 24U;
}

#else

namespace
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

/// Up to four bytes as a little-endian number, whatever the byte order of the machine.
std::uint32_t LittleEndian(const unsigned char* bytes, std::size_t count)
{
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < count; ++i)
        word |= static_cast<std::uint32_t>(bytes[i]) << (8U * i);
    return word;
}

}  // namespace

std::uint32_t Digest(const void* data, std::size_t size)
{
    // The length comes first, so that a run of zero bytes differs from a longer one.
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::uint32_t state = static_cast<std::uint32_t>(size) * 0x9E3779B9U + 0x85EBCA77U;
    for (; size >= 4; bytes += 4, size -= 4)
        state = Mix(state ^ LittleEndian(bytes, 4));
    if (size > 0)
        state = Mix(state ^ LittleEndian(bytes, size));
    return state;
}

#endif

ContentHash& ContentHash::AddBytes(const void* data, std::size_t size)
{
    value_ = value_ * 31U ^ Digest(data, size);
    return *this;
}

ContentHash& ContentHash::Add(float value) { return Add(std::bit_cast<std::uint32_t>(value) & kSignificantFloatBits); }

ContentHash& ContentHash::Add(const D3DXCOLOR& color) { return Add(color.a).Add(color.r).Add(color.g).Add(color.b); }

ContentHash& ContentHash::Add(const D3DXVECTOR3& vector) { return Add(vector.x).Add(vector.y).Add(vector.z); }

ContentHash& ContentHash::Add(const D3DXMATRIX& matrix)
{
    for (const auto& row : matrix.m)
        for (const float value : row)
            Add(value);
    return *this;
}

ContentHash& ContentHash::Add(const std::string& text) { return AddBytes(text.data(), text.size()); }

ContentHash& ContentHash::Add(const Transform& transform)
{
    return AddBytes(&transform.GetStoredForm(), sizeof(Transform::StoredForm));
}

ContentHash& ContentHash::Add(bool value)
{
    const unsigned char byte = value ? 1 : 0;
    return AddBytes(&byte, sizeof(byte));
}

ContentHash& ContentHash::Add(std::int32_t value) { return AddBytes(&value, sizeof(value)); }

ContentHash& ContentHash::Add(std::uint32_t value) { return AddBytes(&value, sizeof(value)); }

ContentHash& ContentHash::Add(std::uint64_t value) { return AddBytes(&value, sizeof(value)); }

}  // namespace Importing
