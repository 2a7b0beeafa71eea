#include <sceneprep/import/gltf/FillGeometry.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

namespace Sceneprep::GltfImport
{

namespace
{

using Importing::Geometry;
using Importing::Vertex;
using Pipeline::VertexAttribute;
using Pipeline::VertexLayout;

constexpr std::string_view kTexCoord = "TEXCOORD_";
constexpr std::string_view kColor = "COLOR_";
constexpr std::string_view kJoints = "JOINTS_";
constexpr std::string_view kWeights = "WEIGHTS_";

/// Sets may have gaps, which are filled; so their number has to be limited.
constexpr std::size_t kMostSets = 64;

/// @return the 3 of "TEXCOORD_3"; none for other names.
std::optional<std::size_t> SetNumber(std::string_view name, std::string_view prefix)
{
    if (!name.starts_with(prefix))
        return std::nullopt;
    std::size_t number = 0;
    const char* end = name.data() + name.size();
    const auto [read, error] = std::from_chars(name.data() + prefix.size(), end, number);
    return error == std::errc() && read == end ? std::optional(number) : std::nullopt;
}

std::size_t CountSets(const Primitive& primitive, std::string_view prefix)
{
    std::size_t sets = 0;
    for (const Attribute& attribute : primitive.attributes)
    {
        const std::optional<std::size_t> number = SetNumber(attribute.name, prefix);
        if (number && *number >= kMostSets)
            attribute.reference.Fail(fmt::format("{} sets are supported", kMostSets));
        if (number)
            sets = std::max(sets, *number + 1);
    }
    return sets;
}

const Attribute* FindSet(const Primitive& primitive, std::string_view prefix, std::size_t set)
{
    return primitive.Find(fmt::format("{}{}", prefix, set));
}

bool IsColor(const Attribute& attribute) { return SetNumber(attribute.name, kColor).has_value(); }

/// @return whether the container's vertices have no place for the attribute.
bool NeedsFurtherSets(const Attribute& attribute)
{
    const std::string_view name = attribute.name;
    return name != "POSITION" && name != "NORMAL" && !SetNumber(name, kTexCoord) && !SetNumber(name, kJoints) &&
           !SetNumber(name, kWeights);
}

int ComponentsOf(const Attribute& attribute)
{
    return IsColor(attribute) ? 4 : static_cast<int>(attribute.values.elements.type.Count());
}

/// Colours in the order of their numbers, tangents, then the others in the order of the file.
std::vector<const Attribute*> FurtherAttributes(const Primitive& primitive)
{
    std::vector<const Attribute*> further;
    for (const Attribute& attribute : primitive.attributes)
    {
        if (NeedsFurtherSets(attribute))
            further.push_back(&attribute);
    }
    const auto rank = [](const Attribute* attribute) {
        constexpr std::size_t kTangent = 1000;
        if (const std::optional<std::size_t> color = SetNumber(attribute->name, kColor))
            return std::min(*color, kTangent - 1);
        return attribute->name == "TANGENT" ? kTangent : kTangent + 1;
    };
    std::stable_sort(further.begin(), further.end(),
                     [&](const Attribute* a, const Attribute* b) { return rank(a) < rank(b); });
    return further;
}

/// Joints and weights of one set, [vertices * 4].
struct Influences
{
    const Attribute* joints;
    std::vector<std::uint32_t> joint;
    std::vector<float> weight;
};

std::vector<Influences> ReadInfluences(const Primitive& primitive)
{
    std::vector<Influences> sets;
    for (std::size_t set = 0; set < CountSets(primitive, kJoints); ++set)
    {
        const Attribute* joints = FindSet(primitive, kJoints, set);
        const Attribute* weights = FindSet(primitive, kWeights, set);
        if (joints == nullptr)
            continue;
        if (weights == nullptr)
            joints->reference.Fail(fmt::format("there is no {}{}", kWeights, set));
        Influences influences{joints, std::vector<std::uint32_t>(primitive.vertexCount * 4),
                              std::vector<float>(primitive.vertexCount * 4)};
        ToWholeNumbers(joints->values.elements, influences.joint.data());
        ToFloats(weights->values.elements, influences.weight.data());
        sets.push_back(std::move(influences));
    }
    return sets;
}

}  // namespace

VertexLayout GeometryFiller::Fill(const Primitive& primitive, std::size_t jointCount, Geometry& geometry)
{
    const std::size_t texCoordSets = CountSets(primitive, kTexCoord);
    std::size_t sets = texCoordSets;
    VertexLayout layout;
    const std::vector<const Attribute*> further = FurtherAttributes(primitive);
    for (const Attribute* attribute : further)
    {
        const int components = ComponentsOf(*attribute);
        const Elements& elements = attribute->values.elements;
        const bool isInteger = !IsColor(*attribute) && elements.component != Component::Float;
        layout.attributes.push_back({.name = std::string(attribute->name),
                                     .firstSet = static_cast<int>(sets),
                                     .components = components,
                                     .numberType = isInteger ? static_cast<int>(elements.component) : 0,
                                     .isNormalized = isInteger && elements.isNormalized});
        sets += (static_cast<std::size_t>(components) + 1) / 2;
    }
    if (!further.empty())
        layout.texCoordSets = static_cast<int>(texCoordSets);

    FillPositions(primitive, geometry);
    FillNormals(primitive, geometry);
    FillWeights(primitive, jointCount, geometry);
    if (sets > 0)
    {
        for (Vertex& vertex : geometry.VertexArray)
            vertex.Vertex::SetTexCoord({0, 0}, sets - 1);  // makes room for all of them at once
    }
    FillTexCoords(primitive, texCoordSets, geometry);
    for (std::size_t i = 0; i < further.size(); ++i)
        FillAttribute(*further[i], layout.attributes[i].firstSet, geometry);
    return layout;
}

const float* GeometryFiller::Floats(const Elements& elements)
{
    floats_.resize(elements.count * elements.type.Count());
    ToFloats(elements, floats_.data());
    return floats_.data();
}

void GeometryFiller::FillPositions(const Primitive& primitive, Geometry& geometry)
{
    const float* floats = Floats(primitive.Find("POSITION")->values.elements);
    geometry.VertexArray.reserve(primitive.vertexCount);
    for (std::size_t v = 0; v < primitive.vertexCount; ++v, floats += 3)
        geometry.VertexArray.emplace_back(floats[0], floats[1], floats[2]);
}

void GeometryFiller::FillNormals(const Primitive& primitive, Geometry& geometry)
{
    const Attribute* normals = primitive.Find("NORMAL");
    if (normals == nullptr)
        return;
    const float* floats = Floats(normals->values.elements);
    for (Vertex& vertex : geometry.VertexArray)
    {
        vertex.Vertex::SetNormal(D3DXVECTOR3(floats[0], floats[1], floats[2]));
        floats += 3;
    }
}

void GeometryFiller::FillTexCoords(const Primitive& primitive, std::size_t sets, Geometry& geometry)
{
    for (std::size_t set = 0; set < sets; ++set)
    {
        const Attribute* attribute = FindSet(primitive, kTexCoord, set);
        if (attribute == nullptr)
            continue;
        const float* floats = Floats(attribute->values.elements);
        for (Vertex& vertex : geometry.VertexArray)
        {
            vertex.Vertex::SetTexCoord({floats[0], 1 - floats[1]}, set);
            floats += 2;
        }
    }
}

void GeometryFiller::FillAttribute(const Attribute& attribute, int firstSet, Geometry& geometry)
{
    Elements elements = attribute.values.elements;
    const bool isColor = IsColor(attribute);
    elements.isNormalized = elements.isNormalized || (isColor && elements.component != Component::Float);
    CheckPrecision(elements);
    const std::size_t stored = elements.type.Count();
    const auto components = static_cast<std::size_t>(ComponentsOf(attribute));
    const float* floats = Floats(elements);
    const auto component = [&](std::size_t i) { return i < stored ? floats[i] : (isColor && i == 3 ? 1.0F : 0.0F); };
    for (Vertex& vertex : geometry.VertexArray)
    {
        for (std::size_t i = 0; i < components; i += 2)
            vertex.Vertex::SetTexCoord({component(i), component(i + 1)}, static_cast<std::size_t>(firstSet) + i / 2);
        floats += stored;
    }
}

void GeometryFiller::CheckPrecision(const Elements& elements)
{
    constexpr std::uint32_t kLargestExact = 1U << 24U;
    if (elements.component != Component::UnsignedInt || elements.isNormalized)
        return;
    std::vector<std::uint32_t> numbers(elements.count * elements.type.Count());
    ToWholeNumbers(elements, numbers.data());
    const bool areExact =
        std::all_of(numbers.begin(), numbers.end(), [](std::uint32_t number) { return number <= kLargestExact; });
    losses_.integers += areExact ? 0 : 1;
}

void GeometryFiller::FillWeights(const Primitive& primitive, std::size_t jointCount, Geometry& geometry)
{
    if (jointCount == 0)
        return;
    const std::vector<Influences> sets = ReadInfluences(primitive);
    std::vector<Vertex::Weight> weights;
    for (std::size_t v = 0; v < geometry.VertexArray.size(); ++v)
    {
        weights.clear();
        for (const Influences& set : sets)
        {
            for (std::size_t i = 4 * v; i < 4 * v + 4; ++i)
            {
                if (set.weight[i] == 0)
                    continue;
                if (set.joint[i] >= jointCount)
                    set.joints->reference.Fail(fmt::format("{} is not below {}", set.joint[i], jointCount));
                if (std::isfinite(set.weight[i]))
                    weights.emplace_back(set.joint[i], set.weight[i]);
                else
                    ++losses_.weights;
            }
        }
        for (std::size_t i = weights.size(); i > 0; --i)  // the last one makes room for all of them
            geometry.VertexArray[v].Vertex::SetWeight(weights[i - 1].first, weights[i - 1].second, i - 1);
    }
}

}  // namespace Sceneprep::GltfImport
