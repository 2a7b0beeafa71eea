// A hash table with open addressing holds one vertex of each group of equal ones. The content hashes only find the
// candidates; the content decides. Sorting the vertices instead would take n log n comparisons of whole vertices.

#include <pipeline/steps/WeldMesh.h>

#include <importing/base/CheckedAccess.h>
#include <importing/math/NearlyEqual.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Pipeline
{

namespace
{

using Importing::Geometry;
using Importing::NearlyEqual;
using Importing::Vertex;

constexpr std::uint32_t kNone = 0xFFFFFFFFU;

bool AreEqual(const D3DXVECTOR3& a, const D3DXVECTOR3& b)
{
    return NearlyEqual(a.x, b.x) && NearlyEqual(a.y, b.y) && NearlyEqual(a.z, b.z);
}

bool HaveEqualTexCoords(Vertex& a, Vertex& b)
{
    const std::uint64_t count = a.Vertex::GetTexCoordCount();
    if (count != b.Vertex::GetTexCoordCount())
        return false;
    for (std::uint64_t set = 0; set < count; ++set)
    {
        const D3DXVECTOR2 first = a.Vertex::GetTexCoord(static_cast<int>(set));
        const D3DXVECTOR2 second = b.Vertex::GetTexCoord(static_cast<int>(set));
        if (!NearlyEqual(first.x, second.x) || !NearlyEqual(first.y, second.y))
            return false;
    }
    return true;
}

bool HaveEqualWeights(Vertex& a, Vertex& b)
{
    const std::uint64_t count = a.Vertex::GetWeightsCount();
    if (count != b.Vertex::GetWeightsCount())
        return false;
    for (std::uint64_t i = 0; i < count; ++i)
    {
        const Vertex::Weight first = a.Vertex::GetWeight(i);
        const Vertex::Weight second = b.Vertex::GetWeight(i);
        const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
        if (first.first != second.first || bits(first.second) != bits(second.second))
            return false;
    }
    return true;
}

bool AreEqual(Vertex& a, Vertex& b)
{
    return a.GetHash() == b.GetHash() && AreEqual(a.Vertex::GetPosition(), b.Vertex::GetPosition()) &&
           AreEqual(a.Vertex::GetNormal(), b.Vertex::GetNormal()) && HaveEqualTexCoords(a, b) && HaveEqualWeights(a, b);
}

/// Spreads the bits of a content hash over the slots of a table; the last bits of content hashes depend on z alone.
std::size_t SlotOf(std::uint32_t hash, std::size_t mask)
{
    return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ULL) >> 32U) & mask;
}

/// Returns for each vertex the first vertex that it is equal to, which may be itself.
std::vector<std::uint32_t> FindFirstEquals(std::vector<Vertex>& vertices)
{
    std::vector<std::uint32_t> slots(std::bit_ceil(vertices.size() + vertices.size() / 2 + 2), kNone);
    const std::size_t mask = slots.size() - 1;
    std::vector<std::uint32_t> firstEquals(vertices.size());
    for (std::size_t v = 0; v < vertices.size(); ++v)
    {
        std::size_t slot = SlotOf(vertices[v].GetHash(), mask);
        while (slots[slot] != kNone && !AreEqual(vertices[slots[slot]], vertices[v]))
            slot = (slot + 1) & mask;
        if (slots[slot] == kNone)
            slots[slot] = static_cast<std::uint32_t>(v);
        firstEquals[v] = slots[slot];
    }
    return firstEquals;
}

bool HasDuplicates(const std::vector<std::uint32_t>& firstEquals)
{
    for (std::size_t v = 0; v < firstEquals.size(); ++v)
    {
        if (firstEquals[v] != v)
            return true;
    }
    return false;
}

}  // namespace

void WeldMesh(Geometry& geometry)
{
    std::vector<Vertex>& vertices = geometry.VertexArray;
    const std::vector<std::uint32_t> firstEquals = FindFirstEquals(vertices);
    if (!HasDuplicates(firstEquals))
        return;
    Importing::CheckIndices(geometry.IndexArray, vertices.size());

    std::vector<std::uint32_t> survivorOf(vertices.size(), kNone);  // by first equal vertex
    std::vector<std::uint32_t> survivors;                           // vertices
    std::vector<std::uint32_t> indices;
    indices.reserve(geometry.IndexArray.size());
    for (const std::uint32_t index : geometry.IndexArray)
    {
        std::uint32_t& survivor = survivorOf[firstEquals[index]];
        if (survivor == kNone)
        {
            survivor = static_cast<std::uint32_t>(survivors.size());
            survivors.push_back(index);
        }
        indices.push_back(survivor);
    }

    std::vector<Vertex> welded;
    welded.reserve(survivors.size());
    for (const std::uint32_t vertex : survivors)
        welded.push_back(std::move(vertices[vertex]));
    vertices = std::move(welded);
    geometry.IndexArray = std::move(indices);
    geometry.SetPolySize(geometry.GetPolySize());  // invalidates the content hash
}

}  // namespace Pipeline
