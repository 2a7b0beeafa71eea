#include <sceneprep/import/gltf/IndexLists.h>

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Sceneprep::GltfImport
{

namespace
{

using Indices = std::vector<std::uint32_t>;

Indices StoredIndices(const Primitive& primitive, const Field& field)
{
    if (!primitive.indices)
    {
        Indices indices(primitive.vertexCount);
        std::iota(indices.begin(), indices.end(), 0U);
        return indices;
    }
    Indices indices(primitive.indices->elements.count);
    ToWholeNumbers(primitive.indices->elements, indices.data());
    const auto bad = std::find_if(indices.begin(), indices.end(),
                                  [&](std::uint32_t index) { return index >= primitive.vertexCount; });
    if (bad != indices.end())
        field.Member("indices").Fail(fmt::format("{} is not below {}", *bad, primitive.vertexCount));
    return indices;
}

Indices LinesOfStrip(const Indices& strip, bool isLoop)
{
    Indices lines;
    for (std::size_t i = 0; i + 1 < strip.size(); ++i)
        lines.insert(lines.end(), {strip[i], strip[i + 1]});
    if (isLoop && strip.size() > 1)
        lines.insert(lines.end(), {strip.back(), strip.front()});
    return lines;
}

/// Every second triangle of a strip has its corners in the other order.
Indices TrianglesOfStrip(const Indices& strip)
{
    Indices triangles;
    triangles.reserve(3 * strip.size());
    for (std::size_t i = 0; i + 2 < strip.size(); ++i)
        triangles.insert(triangles.end(), {strip[i], strip[i + 1 + i % 2], strip[i + 2 - i % 2]});
    return triangles;
}

Indices TrianglesOfFan(const Indices& fan)
{
    Indices triangles;
    triangles.reserve(3 * fan.size());
    for (std::size_t i = 1; i + 1 < fan.size(); ++i)
        triangles.insert(triangles.end(), {fan[i], fan[i + 1], fan[0]});
    return triangles;
}

std::size_t PolySizeOf(int mode) { return mode == kPoints ? 1 : mode < kTriangles ? 2 : 3; }

}  // namespace

IndexList MakeIndexList(const Primitive& primitive, const Field& field)
{
    IndexList list{.polySize = PolySizeOf(primitive.mode)};
    Indices stored = StoredIndices(primitive, field);
    switch (primitive.mode)
    {
        case kLineLoop:
        case kLineStrip:
            list.indices = LinesOfStrip(stored, primitive.mode == kLineLoop);
            break;
        case kTriangleStrip:
            list.indices = TrianglesOfStrip(stored);
            break;
        case kTriangleFan:
            list.indices = TrianglesOfFan(stored);
            break;
        default:
            list.indices = std::move(stored);
    }
    list.leftOver = list.indices.size() % list.polySize;
    list.indices.resize(list.indices.size() - list.leftOver);
    return list;
}

}  // namespace Sceneprep::GltfImport
