#include <sceneprep/import/gltf/Primitives.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/Draco.h>

#include <algorithm>
#include <initializer_list>
#include <string>

namespace Sceneprep::GltfImport
{

namespace
{

using Types = std::initializer_list<std::string_view>;

/// Returns the element types that an attribute may have; all types for custom attributes.
Types TypesOf(std::string_view name)
{
    static const Types kVector2 = {"VEC2"};
    static const Types kVector3 = {"VEC3"};
    static const Types kVector4 = {"VEC4"};
    static const Types kColor = {"VEC3", "VEC4"};
    if (name == "POSITION" || name == "NORMAL")
        return kVector3;
    if (name == "TANGENT" || name.starts_with("JOINTS_") || name.starts_with("WEIGHTS_"))
        return kVector4;
    if (name.starts_with("TEXCOORD_"))
        return kVector2;
    if (name.starts_with("COLOR_"))
        return kColor;
    return {};
}

bool IsUnsignedInteger(Component component)
{
    return component == Component::UnsignedByte || component == Component::UnsignedShort ||
           component == Component::UnsignedInt;
}

Accessor ReadIndices(const Field& reference, Accessors& accessors)
{
    Accessor indices = accessors.Get(reference, {"SCALAR"});
    if (!IsUnsignedInteger(indices.elements.component))
        reference.Fail(
            fmt::format("component type {} is not an unsigned integer", static_cast<int>(indices.elements.component)));
    return indices;
}

void CheckCount(const Attribute& attribute, std::size_t expected)
{
    if (attribute.values.elements.count != expected)
        attribute.reference.Fail(fmt::format("{} elements, {} expected", attribute.values.elements.count, expected));
    if (attribute.name.starts_with("JOINTS_") && !IsUnsignedInteger(attribute.values.elements.component))
        attribute.reference.Fail(fmt::format("component type {} is not an unsigned integer",
                                             static_cast<int>(attribute.values.elements.component)));
}

template <typename Read>
std::vector<Attribute> ReadAttributes(const Field& attributes, const Read& read)
{
    std::vector<Attribute> list;
    const Json::object_t& members = attributes.Members();
    list.reserve(members.size());
    for (const auto& [name, number] : members)
    {
        const Field reference(number, attributes.Where().Member(name));
        list.push_back({name, reference, read(name, reference)});
    }
    return list;
}

/// Replaces the indices and the values of the attributes that the extension contains.
void Decompress(const Field& extension, BufferViews& views, Primitive& primitive)
{
    const int view = extension.Member("bufferView").IndexBelow(views.Count());
    const DracoMesh mesh(extension, views.Get(static_cast<std::size_t>(view)).bytes);
    const Field ids = extension.Member("attributes");
    for (Attribute& attribute : primitive.attributes)
    {
        const std::optional<Field> id = ids.Find(attribute.name);
        if (!id)
            continue;
        Elements& elements = attribute.values.elements;
        attribute.values.own = mesh.Values(*id, elements.type, elements.component);
        elements.data = attribute.values.own.data();
        elements.count = mesh.VertexCount();
        elements.stride = elements.type.Count() * SizeOf(elements.component);
    }
    const std::vector<std::uint32_t> indices = mesh.Indices();
    Accessor decoded{.elements = {.count = indices.size(),
                                  .stride = sizeof(std::uint32_t),
                                  .type = {1, 1},
                                  .component = Component::UnsignedInt},
                     .typeName = "SCALAR"};
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(indices.data());
    decoded.own.assign(bytes, bytes + indices.size() * sizeof(std::uint32_t));
    decoded.elements.data = decoded.own.data();
    primitive.indices = std::move(decoded);
    primitive.mode = kTriangles;
}

std::map<std::string, CarriedAccessor> Carry(const std::vector<Attribute>& attributes, Accessors& accessors)
{
    std::map<std::string, CarriedAccessor> carried;
    for (const Attribute& attribute : attributes)
        carried.emplace(attribute.name, accessors.Carry(attribute.values));
    return carried;
}

}  // namespace

const Attribute* Primitive::Find(std::string_view name) const
{
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const Attribute& attribute) { return attribute.name == name; });
    return found == attributes.end() ? nullptr : &*found;
}

std::optional<Primitive> ReadPrimitive(const Field& field, Accessors& accessors, BufferViews& views)
{
    Primitive primitive;
    if (const std::optional<Field> mode = field.Find("mode"))
        primitive.mode = mode->IndexBelow(kTriangleFan + 1);
    const auto read = [&](std::string_view name, const Field& reference) {
        return accessors.Get(reference, TypesOf(name));
    };
    primitive.attributes = ReadAttributes(field.Member("attributes"), read);
    if (primitive.Find("POSITION") == nullptr)
        return std::nullopt;
    if (const std::optional<Field> draco = field.Extension("KHR_draco_mesh_compression"))
        Decompress(*draco, views, primitive);
    else if (const std::optional<Field> indices = field.Find("indices"))
        primitive.indices = ReadIndices(*indices, accessors);

    primitive.vertexCount = primitive.Find("POSITION")->values.elements.count;
    for (std::size_t i = 0; i < field.SizeOf("targets"); ++i)
        primitive.targets.push_back(ReadAttributes(field.Member("targets").Element(i),
                                                   [&](auto&, const Field& target) { return accessors.Get(target); }));
    for (const Attribute& attribute : primitive.attributes)
        CheckCount(attribute, primitive.vertexCount);
    for (const std::vector<Attribute>& target : primitive.targets)
    {
        for (const Attribute& attribute : target)
            CheckCount(attribute, primitive.vertexCount);
    }
    return primitive;
}

CarriedPrimitive Carry(const Primitive& primitive, Accessors& accessors)
{
    CarriedPrimitive carried;
    carried.mode = primitive.mode;
    if (primitive.indices)
        carried.indices = accessors.Carry(*primitive.indices);
    carried.attributes = Carry(primitive.attributes, accessors);
    for (const std::vector<Attribute>& target : primitive.targets)
        carried.targets.push_back(Carry(target, accessors));
    return carried;
}

}  // namespace Sceneprep::GltfImport
