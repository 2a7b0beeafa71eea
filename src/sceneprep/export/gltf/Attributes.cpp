#include <sceneprep/export/gltf/Attributes.h>

#include <fmt/format.h>
#include <sceneprep/export/gltf/CarriedAccessors.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
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

bool IsFiniteUV(const D3DXVECTOR2& v) { return std::isfinite(v.x) && std::isfinite(v.y); }

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
        if (IsFiniteUV(uv))
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

/// Returns the values as integers, multiplied by the type's largest number if they are parts of it; empty where that
/// would change one of them.
template <typename T>
std::vector<T> ToIntegers(const std::vector<float>& values, bool isNormalized)
{
    const auto one = isNormalized ? static_cast<double>(std::numeric_limits<T>::max()) : 1.0;
    std::vector<T> integers;
    integers.reserve(values.size());
    for (const float value : values)
    {
        const double number = std::round(static_cast<double>(value) * one);
        if (!(number >= static_cast<double>(std::numeric_limits<T>::lowest()) &&
              number <= static_cast<double>(std::numeric_limits<T>::max())))
            return {};
        const auto integer = static_cast<T>(number);
        if (static_cast<float>(integer) / static_cast<float>(one) != value)
            return {};
        integers.push_back(integer);
    }
    return integers;
}

template <typename T>
int AddPacked(const std::vector<T>& values, std::size_t count, const Layout& layout, Buffers& buffers)
{
    return buffers.AddAccessor(buffers.AddView(values.data(), values.size() * sizeof(T), Usage::Vertices), count,
                               layout);
}

int WriteColors(const std::vector<float>& values, std::size_t count, Buffers& buffers)
{
    if (const auto bytes = ToIntegers<std::uint8_t>(values, true); !bytes.empty())
        return AddPacked(bytes, count, {"VEC4", kUnsignedByte, true}, buffers);
    if (const auto shorts = ToIntegers<std::uint16_t>(values, true); !shorts.empty())
        return AddPacked(shorts, count, {"VEC4", kUnsignedShort, true}, buffers);
    return AddPacked(values, count, {"VEC4"}, buffers);
}

template <typename T>
std::vector<std::uint8_t> IntegerBytes(const std::vector<float>& values, bool isNormalized)
{
    const std::vector<T> integers = ToIntegers<T>(values, isNormalized);
    std::vector<std::uint8_t> bytes(integers.size() * sizeof(T));
    if (!bytes.empty())
        std::memcpy(bytes.data(), integers.data(), bytes.size());
    return bytes;
}

/// Returns the values as integers of the type that they had in the input; empty where that would change one of them.
std::vector<std::uint8_t> BytesOf(const std::vector<float>& values, const VertexAttribute& attribute)
{
    switch (attribute.numberType)
    {
        case kByte:
            return IntegerBytes<std::int8_t>(values, attribute.isNormalized);
        case kUnsignedByte:
            return IntegerBytes<std::uint8_t>(values, attribute.isNormalized);
        case kShort:
            return IntegerBytes<std::int16_t>(values, attribute.isNormalized);
        case kUnsignedShort:
            return IntegerBytes<std::uint16_t>(values, attribute.isNormalized);
        case kUnsignedInt:
            return IntegerBytes<std::uint32_t>(values, attribute.isNormalized);
        default:
            return {};
    }
}

/// Writes numbers as the integers that they were; matrices, whose columns would need padding, as floats.
int WriteNumbers(const std::vector<float>& values, std::size_t count, const char* type,
                 const VertexAttribute& attribute, Buffers& buffers, Document& document)
{
    CarriedAccessor integers = {
        .componentType = attribute.numberType, .type = type, .isNormalized = attribute.isNormalized, .count = count};
    if (attribute.components <= 4)
        integers.bytes = BytesOf(values, attribute);
    if (integers.bytes.empty())
        return AddPacked(values, count, {type}, buffers);
    return AddCarried(integers, Usage::Vertices, false, buffers, document);
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

void WriteAttribute(Geometry& geometry, const VertexAttribute& attribute, Buffers& buffers, Document& document,
                    MeshArrays& arrays, MendedValues& mended)
{
    const std::size_t count = geometry.VertexArray.size();
    const char* type = TypeOf(attribute.components);
    if (type == nullptr)
        return;
    std::vector<float> values = Collect(geometry, attribute, mended);
    if (attribute.name == "TANGENT")
        MendTangents(values, mended);
    arrays.attributes[attribute.name] = attribute.name.starts_with("COLOR_") && attribute.components == 4
                                            ? WriteColors(values, count, buffers)
                                            : WriteNumbers(values, count, type, attribute, buffers, document);
}

}  // namespace

void WriteAttributes(Geometry& geometry, const VertexLayout& layout, Buffers& buffers, Document& document,
                     MeshArrays& arrays, MendedValues& mended)
{
    const std::uint64_t sets = CountSets(geometry);
    const std::uint64_t texCoordSets =
        layout.texCoordSets < 0 ? sets : std::min(sets, static_cast<std::uint64_t>(layout.texCoordSets));
    for (std::uint64_t set = 0; set < texCoordSets; ++set)
        WriteTexCoords(geometry, set, fmt::format("TEXCOORD_{}", set), buffers, arrays, mended);
    for (const VertexAttribute& attribute : layout.attributes)
        WriteAttribute(geometry, attribute, buffers, document, arrays, mended);
}

}  // namespace Sceneprep::Gltf
