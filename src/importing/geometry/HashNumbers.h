#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Importing
{

/// Stands for "no number yet".
inline constexpr std::uint32_t kNoNumber = 0xFFFFFFFFU;

/// Maps the content hashes of a mesh's vertices to numbers: open addressing with linear probing.
///
/// It starts with a slot for every fourth vertex, which is enough for a search that ends early and for the sixth of its
/// vertices that a welded triangle soup keeps; small tables stay in the cache. When two thirds of the slots are taken
/// it grows once, so that the hashes of all vertices take half of them at most.
class HashNumbers
{
public:
    /// For at most vertexCount different hashes.
    explicit HashNumbers(std::size_t vertexCount)
        : slots_(std::bit_ceil(vertexCount / 4 + 2)), vertexCount_(vertexCount)
    {}

    /// @return where the number of this hash is kept, good until the next call; kNoNumber where the hash is new. The
    ///         caller gives it one before the next call.
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

    /// Content hashes end in the position's z alone; the upper bits of a product depend on all bits of the hash.
    static std::size_t Spread(std::uint32_t hash)
    {
        return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ULL) >> 32U);
    }

    std::vector<Slot> slots_;
    std::size_t vertexCount_;
    std::size_t used_ = 0;
};

}  // namespace Importing
