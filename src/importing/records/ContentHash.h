#pragma once

#include <importing/math/D3DXMath.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace Importing
{

class Transform;

/// The 32-bit digest of a run of bytes.
///
/// On Windows it is the platform's HashData; elsewhere a function of our own, the same on every platform, whose
/// digests of runs of four bytes are all different. Digests are meant for comparison within one run.
/// data must not be null, also when size is 0.
std::uint32_t Digest(const void* data, std::size_t size);

/// Folds the digests of a record's fields, in the order in which they are added, into the record's content hash.
///
/// The fold starts at 0, and every field turns h into h x 31 XOR digest, in wrapping 32-bit arithmetic.
class ContentHash
{
public:
    /// Adds a float without its lowest 8 bits, so that nearly equal values count as the same content.
    ContentHash& Add(float value);
    /// Adds four floats in the order alpha, red, green, blue.
    ContentHash& Add(const D3DXCOLOR& color);
    /// Adds x, y, z.
    ContentHash& Add(const D3DXVECTOR3& vector);
    /// Adds 16 floats, row by row.
    ContentHash& Add(const D3DXMATRIX& matrix);
    /// Adds the characters, without a terminator, as one digest.
    ContentHash& Add(const std::string& text);
    /// Adds the form in which the placement is stored as one digest, nothing masked: the same placement stored as a
    /// matrix and as angles counts as different content.
    ContentHash& Add(const Transform& transform);
    ContentHash& Add(bool value);
    ContentHash& Add(std::int32_t value);
    ContentHash& Add(std::uint32_t value);
    ContentHash& Add(std::uint64_t value);
    /// Adds a run of bytes as it stands, as one digest.
    ContentHash& AddBytes(const void* data, std::size_t size);

    std::uint32_t Value() const { return value_; }

private:
    std::uint32_t value_ = 0;
};

}  // namespace Importing
