#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Importing
{

/// The value of a hash that has no number yet.
inline constexpr std::uint32_t kNoNumber = 0xFFFFFFFFU;

/// Maps the content hashes of a mesh's vertices to numbers: a hash table with open addressing and linear probing.
///
/// The table starts with one slot for every four vertices. That is enough for a search that ends early, and for welding
/// unconnected triangles, which keeps about one vertex in six; a small table fits into the cache. When two thirds of
/// the slots are used, the table grows once, to at least two slots for each vertex.
///
/// Cost: constant for each lookup on average; memory linear in the vertices. A standard hash map allocates a node for
/// each hash, and a sorted map compares log n hashes for each lookup; welding spends most of its time in these lookups.
class HashNumbers
{
public:
    /// Creates a table for at most vertexCount different hashes.
    explicit HashNumbers(std::size_t vertexCount)
        : slots_(std::bit_ceil(vertexCount / 4 + 2)), vertexCount_(vertexCount)
    {}

    /// Returns a reference to the number of this hash, valid until the next call. The number of a new hash is
    /// kNoNumber, and the caller must assign another one before the next call.
    std::uint32_t& operator[](std::uint32_t hash)
    {
        Slot* slot = &Find(hash);
        if (slot->number == kNoNumber)
        {
            if (3 * (used_ + 1) > 2 * slots_.size())
            {
                Grow();
                slot = &Find(hash);
            }
            ++used_;
            slot->hash = hash;
        }
        return slot->number;
    }

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t number = kNoNumber;
    };

    Slot& Find(std::uint32_t hash)
    {
        Slot* const slots = slots_.data();
        const std::size_t mask = slots_.size() - 1;
        std::size_t i = Spread(hash) & mask;
        while (slots[i].number != kNoNumber && slots[i].hash != hash)
            i = (i + 1) & mask;
        return slots[i];
    }

    void Grow()
    {
        const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(std::bit_ceil(2 * vertexCount_ + 2)));
        for (const Slot& slot : old)
            if (slot.number != kNoNumber)
                Find(slot.hash) = slot;
    }

    /// Returns the hash with its bits spread. The last field of a vertex's content hash is the z of its position, so
    /// the low bits depend on few fields. The upper bits of a product depend on all bits of the hash.
    static std::size_t Spread(std::uint32_t hash)
    {
        return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ULL) >> 32U);
    }

    std::vector<Slot> slots_;
    std::size_t vertexCount_;
    std::size_t used_ = 0;
};

}  // namespace Importing
