#include <importing/base/CheckedAccess.h>
#include <importing/geometry/Geometry.h>
#include <importing/math/NearlyEqual.h>

#include <bit>
#include <cstddef>
#include <utility>

namespace Importing
{
namespace
{

/// Maps vertex hashes to vertex numbers: open addressing with linear probing, at most half full.
class HashTable
{
public:
    explicit HashTable(std::size_t count) : slots_(std::bit_ceil(2 * count + 2), Slot{0, kFree}) {}

    /// @return where the number of this hash is kept, kFree where the hash is new.
    std::uint32_t& operator[](std::uint32_t hash)
    {
        const std::size_t mask = slots_.size() - 1;
        std::size_t i = Spread(hash) & mask;
        while (slots_[i].number != kFree && slots_[i].hash != hash)
            i = (i + 1) & mask;
        slots_[i].hash = hash;
        return slots_[i].number;
    }

    static constexpr std::uint32_t kFree = 0xFFFFFFFFU;

private:
    struct Slot
    {
        std::uint32_t hash;
        std::uint32_t number;
    };

    /// Content hashes end in the position's z alone; the upper bits of a product depend on all bits of the hash.
    static std::size_t Spread(std::uint32_t hash)
    {
        return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ULL) >> 32U);
    }

    std::vector<Slot> slots_;
};

/// The quick test. Stops at the first hash that it meets again, so hashes of later vertices stay uncomputed.
bool HasDuplicates(std::vector<Vertex>& vertices)
{
    HashTable seen(vertices.size());
    for (Vertex& vertex : vertices)
    {
        std::uint32_t& number = seen[vertex.GetHash()];
        if (number != HashTable::kFree)
            return true;
        number = 0;
    }
    return false;
}

/// Finds the survivors in the order in which indices use them, and the indices that lead to them.
class VertexWelder
{
public:
    explicit VertexWelder(std::vector<Vertex>& vertices) : vertices_(vertices), latest_(vertices.size()) {}

    /// @return the number of the survivor that stands for a vertex.
    /// @throws std::out_of_range when there would be more survivors than vertices: different vertices of one hash,
    ///         used alternately, replace one another over and over.
    std::uint32_t Survivor(std::uint32_t index)
    {
        Vertex& vertex = vertices_[index];
        std::uint32_t& number = latest_[vertex.GetHash()];
        const bool isKnown = number != HashTable::kFree &&
                             NearlyEqual(vertices_[survivors_[number]].GetPosition().x, vertex.GetPosition().x);
        if (!isKnown)
        {
            CheckIndex(survivors_.size(), vertices_.size());
            number = static_cast<std::uint32_t>(survivors_.size());
            survivors_.push_back(index);
        }
        return number;
    }

    /// Copies: with colliding hashes a vertex may survive more than once.
    std::vector<Vertex> Survivors() const
    {
        std::vector<Vertex> welded;
        welded.reserve(survivors_.size());
        for (const std::uint32_t index : survivors_)
            welded.push_back(vertices_[index]);
        return welded;
    }

private:
    std::vector<Vertex>& vertices_;
    HashTable latest_;                      ///< hash -> the survivor that took it last
    std::vector<std::uint32_t> survivors_;  ///< survivor -> vertex
};

}  // namespace

int Geometry::Optimize()
{
    if (!HasDuplicates(VertexArray))
        return 0;
    CheckIndices(IndexArray, VertexArray.size());

    VertexWelder welder(VertexArray);
    std::vector<std::uint32_t> indices;
    indices.reserve(IndexArray.size());
    for (const std::uint32_t index : IndexArray)
        indices.push_back(welder.Survivor(index));

    VertexArray = welder.Survivors();
    IndexArray = std::move(indices);
    SetHashInvalid();
    return 0;
}

}  // namespace Importing
