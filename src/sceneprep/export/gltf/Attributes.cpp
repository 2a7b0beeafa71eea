#include <sceneprep/export/gltf/Attributes.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace Sceneprep::Gltf
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Pipeline::VertexAttribute;
using Pipeline::VertexLayout;

std::uint64_t CountSets(const Geometry& geometry)
{
    std::uint64_t sets = 0;
    for (const Vertex& vertex : geometry.VertexArray)
        sets = std::max(sets, vertex.GetTexCoordCount());
    return sets;
}

bool IsFinite(const D3DXVECTOR2& v) { return std::isfinite(v.x) && std::isfinite(v.y); }

void WriteTexCoords(Geometry& geometry, std::uint64_t set, const std::string& name, Buffers& buffers,
                    MeshArrays& arrays, MendedValues& mended)
{
    std::vector<D3DXVECTOR2> texCoords(geometry.VertexArray.size(), D3DXVECTOR2(0, 1));
    for (std::size_t v = 0; v < texCoords.size(); ++v)
    {
        Vertex& vertex = geometry.VertexArray[v];
        if (set >= vertex.GetTexCoordCount())
            continue;
        const D3DXVECTOR2 uv = vertex.GetTexCoord(static_cast<int>(set));
        if (IsFinite(uv))
            texCoords[v] = {uv.x, 1 - uv.y};
        else
            ++mended.texCoords;
    }
    arrays.attributes[name] = buffers.Add(texCoords, {"VEC2"}, Usage::Vertices);
}

/// Returns the components of an attribute, vertex by vertex. Values that are not finite become 0.
std::vector<float> Collect(Geometry& geometry, const VertexAttribute& attribute, MendedValues& mended)
{
    const auto components = static_cast<std::size_t>(attribute.components);
    std::vector<float> values(geometry.VertexArray.size() * components, 0.0F);
    for (std::size_t v = 0; v < geometry.VertexArray.size(); ++v)
    {
        Vertex& vertex = geometry.VertexArray[v];
        for (std::size_t c = 0; c < components; ++c)
        {
            const std::uint64_t set = static_cast<std::uint64_t>(attribute.firstSet) + c / 2;
            if (set >= vertex.GetTexCoordCount())
                break;
            const D3DXVECTOR2 pair = vertex.GetTexCoord(static_cast<int>(set));
            const float value = c % 2 == 0 ? pair.x : pair.y;
            if (std::isfinite(value))
                values[v * components + c] = value;
            else
                ++mended.attributes;
        }
    }
    return values;
}

/// Returns the values as whole parts of the type's largest number; empty where that would change one of them.
template <typename T>
std::vector<T> Normalized(const std::vector<float>& values)
{
    constexpr auto kLargest = static_cast<float>(std::numeric_limits<T>::max());
    std::vector<T> parts;
    parts.reserve(values.size());
    for (const float value : values)
    {
        if (!(value >= 0 && value <= 1))
            return {};
        const auto part = static_cast<T>(std::lround(value * kLargest));
        if (static_cast<float>(part) / kLargest != value)
            return {};
        parts.push_back(part);
    }
    return parts;
}

template <typename T>
int AddPacked(const std::vector<T>& values, std::size_t count, const Layout& layout, Buffers& buffers)
{
    return buffers.AddAccessor(buffers.AddView(values.data(), values.size() * sizeof(T), Usage::Vertices), count,
                               layout);
}

int WriteColors(const std::vector<float>& values, std::size_t count, Buffers& buffers)
{
    if (const auto bytes = Normalized<std::uint8_t>(values); !bytes.empty())
        return AddPacked(bytes, count, {"VEC4", kUnsignedByte, true}, buffers);
    if (const auto shorts = Normalized<std::uint16_t>(values); !shorts.empty())
        return AddPacked(shorts, count, {"VEC4", kUnsignedShort, true}, buffers);
    return AddPacked(values, count, {"VEC4"}, buffers);
}

/// Gives tangents unit length, and 1 or -1 as their fourth component.
void MendTangents(std::vector<float>& values, MendedValues& mended)
{
    for (auto tangent = values.begin(); tangent != values.end(); tangent += 4)
    {
        const double length = std::hypot(static_cast<double>(tangent[0]), static_cast<double>(tangent[1]),
                                         static_cast<double>(tangent[2]));
        if (length > 0)
            std::transform(tangent, tangent + 3, tangent,
                           [length](float part) { return static_cast<float>(part / length); });
        else
        {
            ++mended.tangents;
            tangent[0] = 1;
        }
        tangent[3] = tangent[3] < 0 ? -1.0F : 1.0F;
    }
}

/// Returns the type that has so many components; null when there is none.
const char* TypeOf(int components)
{
    constexpr std::array<const char*, 5> kTypes = {nullptr, "SCALAR", "VEC2", "VEC3", "VEC4"};
    if (components == 9)
        return "MAT3";
    if (components == 16)
        return "MAT4";
    return components >= 1 && components <= 4 ? kTypes[static_cast<std::size_t>(components)] : nullptr;
}

void WriteAttribute(Geometry& geometry, const VertexAttribute& attribute, Buffers& buffers, MeshArrays& arrays,
                    MendedValues& mended)
{
    const std::size_t count = geometry.VertexArray.size();
    const char* type = TypeOf(attribute.components);
    const bool isTangent = attribute.name == "TANGENT";
    if (type == nullptr || (isTangent && !arrays.attributes.contains("NORMAL")))
        return;
    std::vector<float> values = Collect(geometry, attribute, mended);
    if (isTangent)
        MendTangents(values, mended);
    arrays.attributes[attribute.name] = attribute.name.starts_with("COLOR_") && attribute.components == 4
                                            ? WriteColors(values, count, buffers)
                                            : AddPacked(values, count, {type}, buffers);
}

}  // namespace

void WriteAttributes(Geometry& geometry, const VertexLayout& layout, Buffers& buffers, MeshArrays& arrays,
                     MendedValues& mended)
{
    const std::uint64_t sets = CountSets(geometry);
    const std::uint64_t texCoordSets =
        layout.texCoordSets < 0 ? sets : std::min(sets, static_cast<std::uint64_t>(layout.texCoordSets));
    for (std::uint64_t set = 0; set < texCoordSets; ++set)
        WriteTexCoords(geometry, set, fmt::format("TEXCOORD_{}", set), buffers, arrays, mended);
    for (const VertexAttribute& attribute : layout.attributes)
        WriteAttribute(geometry, attribute, buffers, arrays, mended);
}

}  // namespace Sceneprep::Gltf
