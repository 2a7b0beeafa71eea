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

/// The quick test. Stops at the first hash that it meets again, so hashes of later vertices stay uncomputed.
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

/// Finds the survivors in the order in which indices use them, and the indices that lead to them.
class VertexWelder
{
public:
    explicit VertexWelder(std::vector<Vertex>& vertices)
        : vertices_(vertices), known_(vertices.size(), kNoNumber), latest_(vertices.size())
    {}

    /// @return the number of the survivor that stands for a vertex.
    /// @throws std::out_of_range when there would be more survivors than vertices: different vertices of one hash,
    ///         used alternately, replace one another over and over.
    std::uint32_t SurvivorOf(std::uint32_t index)
    {
        std::uint32_t& known = known_[index];
        if (known == kNoNumber || survivors_[known].isReplaced)
            known = Find(index);
        return known;
    }

    /// The vertices are left without what the survivors took over.
    std::vector<Vertex> TakeSurvivors()
    {
        std::vector<Vertex> welded;
        welded.reserve(survivors_.size());
        for (const Survivor& survivor : survivors_)
        {
            // Without a replacement no vertex survives twice.
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
        float x;          ///< of its position
        bool isReplaced;  ///< whether another survivor took its hash since
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
    std::vector<std::uint32_t> known_;  ///< vertex -> its survivor, kNoNumber before its first use
    HashNumbers latest_;                ///< hash -> the survivor that took it last
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
