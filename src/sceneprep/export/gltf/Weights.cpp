// The weights of a vertex are sorted by size and divided by their sum, in sets of four. A vertex has few weights, so a
// list with a linear search is faster than a map.

#include <sceneprep/export/gltf/Weights.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;

constexpr std::size_t kPerSet = 4;

/// Sums that differ from 1 by less come from rounding.
constexpr float kRounding = 1e-3F;

/// A vertex's weights, one for each joint, largest first.
using Shares = std::vector<Vertex::Weight>;

bool HasAllJoints(Geometry& geometry)
{
    const std::size_t count =
        std::min<std::size_t>(geometry.JointArray.size(), std::numeric_limits<std::uint16_t>::max() + 1U);
    for (Vertex& vertex : geometry.VertexArray)
    {
        for (std::uint64_t w = 0; w < vertex.GetWeightsCount(); ++w)
        {
            if (vertex.GetWeight(w).first >= count)
                return false;
        }
    }
    return true;
}

void Join(const Vertex::Weight& weight, Shares& shares)
{
    const auto same = std::find_if(shares.begin(), shares.end(),
                                   [&](const Vertex::Weight& share) { return share.first == weight.first; });
    if (same == shares.end())
        shares.push_back(weight);
    else
        same->second += weight.second;
}

bool AddUpToOne(Vertex& vertex)
{
    float sum = 0;
    for (std::uint64_t w = 0; w < vertex.GetWeightsCount(); ++w)
        sum += vertex.GetWeight(w).second;
    return std::fabs(sum - 1) <= kRounding;
}

void Normalize(Shares& shares)
{
    float sum = 0;
    for (const Vertex::Weight& share : shares)
        sum += share.second;
    if (shares.empty() || !std::isfinite(sum))
    {
        shares = {{0, 1.0F}};
        return;
    }
    for (Vertex::Weight& share : shares)
        share.second /= sum;
}

Shares SharesOf(Vertex& vertex)
{
    Shares shares;
    for (std::uint64_t w = 0; w < vertex.GetWeightsCount(); ++w)
    {
        const Vertex::Weight weight = vertex.GetWeight(w);
        if (weight.second > 0)
            Join(weight, shares);
    }
    Normalize(shares);
    std::stable_sort(shares.begin(), shares.end(),
                     [](const Vertex::Weight& a, const Vertex::Weight& b) { return a.second > b.second; });
    return shares;
}

void Grow(WeightSets& sets, std::size_t count, std::size_t vertices)
{
    while (sets.joints.size() < count)
    {
        sets.joints.emplace_back(vertices);
        sets.weights.emplace_back(vertices);
    }
}

}  // namespace

std::optional<WeightSets> CollectWeights(Geometry& geometry)
{
    const bool anyWeights = std::any_of(geometry.VertexArray.begin(), geometry.VertexArray.end(),
                                        [](const Vertex& vertex) { return vertex.GetWeightsCount() > 0; });
    if (!anyWeights || !HasAllJoints(geometry))
        return std::nullopt;

    WeightSets sets;
    for (std::size_t v = 0; v < geometry.VertexArray.size(); ++v)
    {
        const Shares shares = SharesOf(geometry.VertexArray[v]);
        sets.normalized += AddUpToOne(geometry.VertexArray[v]) ? 0 : 1;
        Grow(sets, (shares.size() + kPerSet - 1) / kPerSet, geometry.VertexArray.size());
        for (std::size_t w = 0; w < shares.size(); ++w)
        {
            sets.joints[w / kPerSet][v][w % kPerSet] = static_cast<std::uint16_t>(shares[w].first);
            sets.weights[w / kPerSet][v][w % kPerSet] = shares[w].second;
        }
    }
    return sets;
}

}  // namespace Sceneprep::Gltf
