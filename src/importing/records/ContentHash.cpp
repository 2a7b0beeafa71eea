// Outside Windows the digest is a function of this library, because std::hash differs between standard libraries. It
// mixes four bytes at a time by bijections, so different fields of four bytes never have equal digests, and it costs
// only a few instructions for each field, unlike a cryptographic digest.

#include <importing/records/ContentHash.h>

#include <importing/records/Transform.h>

#if defined(_WIN32)
#include <windows.h>

#include <shlwapi.h>
#endif

namespace Importing
{

#if defined(_WIN32)

std::uint32_t Digest(const void* data, std::size_t size)
{
    // HashData takes a pointer to non-const bytes but only reads them.
    BYTE output[4] = {};
    HashData(static_cast<BYTE*>(const_cast<void*>(data)), static_cast<DWORD>(size), output, sizeof(output));
    return static_cast<std::uint32_t>(output[0]) | static_cast<std::uint32_t>(output[1]) << 8U |
           static_cast<std::uint32_t>(output[2]) << 16U | static_cast<std::uint32_t>(output[3]) << 24U;
}

#else

namespace
{

/// Returns up to four bytes as a little-endian number, regardless of the byte order of the machine.
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
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::uint32_t state = DigestSteps::Start(size);
    for (; size >= 4; bytes += 4, size -= 4)
        state = DigestSteps::Next(state, LittleEndian(bytes, 4));
    if (size > 0)
        state = DigestSteps::Next(state, LittleEndian(bytes, size));
    return state;
}

#endif

ContentHash& ContentHash::AddBytes(const void* data, std::size_t size) { return Fold(Digest(data, size)); }

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

ContentHash& ContentHash::Add(std::uint64_t value) { return AddBytes(&value, sizeof(value)); }

}  // namespace Importing
