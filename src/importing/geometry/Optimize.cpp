// Two phases. The quick test hashes vertices until a hash repeats; a mesh without duplicates ends there, unchanged.
// Otherwise the indices are walked once: a table from hash to kept vertex finds duplicates, and a second table from old
// vertex to kept vertex answers every later use of the same vertex without hashing. Results are built in new arrays and
// swapped in at the end, so that an exception changes nothing. Cost: linear in vertices and indices on average. Sorting
// the vertices instead would cost n log n and lose the order of first use, which is part of the result.

#include <importing/base/CheckedAccess.h>
#include <importing/geometry/Geometry.h>
#include <importing/geometry/HashNumbers.h>
#include <importing/math/NearlyEqual.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Importing
{
namespace
{

/// Returns whether two vertices have equal hashes. Stops at the first hash that repeats, so the hashes of later
/// vertices are not computed.
bool HasDuplicates(std::vector<Vertex>& vertices)
{
    HashNumbers seen(vertices.size());
    for (Vertex& vertex : vertices)
    {
        std::uint32_t& number = seen[vertex.GetHash()];
        if (number != kNoNumber)
            return true;
        number = 0;
    }
    return false;
}

/// Collects the survivors, the vertices that are kept, in the order in which indices use them.
class VertexWelder
{
public:
    explicit VertexWelder(std::vector<Vertex>& vertices)
        : vertices_(vertices), known_(vertices.size(), kNoNumber), latest_(vertices.size())
    {}

    /// Returns the number of the survivor that replaces a vertex.
    /// @throws std::out_of_range when there would be more survivors than vertices. This happens when different vertices
    ///         with equal hashes are used alternately, because each replaces the other in the table.
    std::uint32_t SurvivorOf(std::uint32_t index)
    {
        std::uint32_t& known = known_[index];
        if (known == kNoNumber || survivors_[known].isReplaced)
            known = Find(index);
        return known;
    }

    /// Returns the survivors. Their content is moved out of the vertices where possible.
    std::vector<Vertex> TakeSurvivors()
    {
        std::vector<Vertex> welded;
        welded.reserve(survivors_.size());
        for (const Survivor& survivor : survivors_)
        {
            // A vertex can be a survivor twice only after a replacement; then it must be copied.
            if (anyReplaced_)
                welded.push_back(vertices_[survivor.vertex]);
            else
                welded.push_back(std::move(vertices_[survivor.vertex]));
        }
        return welded;
    }

private:
    struct Survivor
    {
        std::uint32_t vertex;
        float x;          ///< the x of its position
        bool isReplaced;  ///< whether another survivor has its hash by now
    };

    std::uint32_t Find(std::uint32_t index)
    {
        Vertex& vertex = vertices_[index];
        const float x = vertex.Vertex::GetPosition().x;
        std::uint32_t& latest = latest_[vertex.GetHash()];
        if (latest != kNoNumber && NearlyEqual(survivors_[latest].x, x))
            return latest;

        CheckIndex(survivors_.size(), vertices_.size());
        if (latest != kNoNumber)
            survivors_[latest].isReplaced = anyReplaced_ = true;
        latest = static_cast<std::uint32_t>(survivors_.size());
        survivors_.push_back({index, x, false});
        return latest;
    }

    std::vector<Vertex>& vertices_;
    std::vector<std::uint32_t> known_;  ///< vertex -> its survivor; kNoNumber before its first use
    HashNumbers latest_;                ///< hash -> the latest survivor with it
    std::vector<Survivor> survivors_;
    bool anyReplaced_ = false;
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
        indices.push_back(welder.SurvivorOf(index));

    VertexArray = welder.TakeSurvivors();
    IndexArray = std::move(indices);
    SetHashInvalid();
    return 0;
}

}  // namespace Importing
