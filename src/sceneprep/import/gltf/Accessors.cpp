#include <sceneprep/import/gltf/Accessors.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace Sceneprep::GltfImport
{

namespace
{

void CheckType(const Field& type, std::initializer_list<std::string_view> types)
{
    if (types.size() == 0 || std::find(types.begin(), types.end(), type.Text()) != types.end())
        return;
    std::string allowed;
    for (const std::string_view name : types)
        allowed += fmt::format("{}{}", allowed.empty() ? "" : " or ", name);
    type.Fail(fmt::format("'{}' is not {}", type.Text(), allowed));
}

Elements LayoutOf(const Field& accessor, std::initializer_list<std::string_view> types)
{
    const Field type = accessor.Member("type");
    Elements elements;
    elements.type = ElementTypeOf(type.Text());
    if (elements.type.Count() == 0)
        type.Fail(fmt::format("'{}' is not a type of accessors", type.Text()));
    CheckType(type, types);
    const Field component = accessor.Member("componentType");
    if (!IsComponent(component.Whole()))
        component.Fail(fmt::format("{} is not a component type", component.Whole()));
    elements.component = static_cast<Component>(component.Whole());
    elements.count = accessor.Member("count").Whole();
    elements.isNormalized = accessor.FlagOr("normalized", false);
    return elements;
}

/// Checks that the elements are inside the view, and points to the first.
void PointInto(const Field& field, const BufferView& view, std::size_t offset, Elements& elements)
{
    const std::size_t size = elements.type.SizeIn(elements.component);
    const std::size_t available = view.bytes.size();
    elements.stride = view.stride == 0 ? size : view.stride;
    if (elements.stride < size)
        field.Fail(
            fmt::format("byteStride {} of the buffer view is below the {} bytes of an element", elements.stride, size));
    const bool fits = offset <= available &&
                      (elements.count == 0 || (size <= available - offset &&
                                               elements.count - 1 <= (available - offset - size) / elements.stride));
    if (!fits)
        field.Fail(
            fmt::format("{} elements of {} bytes from byte {} on lead outside the buffer view, which has {} bytes",
                        elements.count, elements.stride, offset, available));
    elements.data = view.bytes.data() + offset;
}

/// Accessors without bytes may have any count; this one would take 4 GiB of floats.
constexpr std::size_t kMostZeros = std::size_t{1} << 30U;

std::vector<std::uint8_t> Packed(const Elements& elements)
{
    const std::size_t size = elements.type.SizeIn(elements.component);
    std::vector<std::uint8_t> bytes(elements.count * size);
    if (elements.data == nullptr)
        return bytes;
    if (elements.stride == size && !bytes.empty())
        std::memcpy(bytes.data(), elements.data, bytes.size());
    else
    {
        for (std::size_t i = 0; i < elements.count; ++i)
            std::memcpy(bytes.data() + i * size, elements.data + i * elements.stride, size);
    }
    return bytes;
}

}  // namespace

Accessors::Accessors(const Field& document, BufferViews& views)
    : list_(document.Find("accessors")), views_(views), count_(document.SizeOf("accessors"))
{}

Accessor Accessors::Get(const Field& reference, std::initializer_list<std::string_view> types)
{
    const int index = reference.IndexBelow(count_);
    const Field field = list_->Element(static_cast<std::size_t>(index));
    Accessor accessor{.elements = LayoutOf(field, types), .typeName = field.Member("type").Text(), .index = index};
    if (field.Has("bufferView"))
        ReadView(field, accessor.elements);
    const std::optional<Field> sparse = field.Find("sparse");
    if (!sparse && field.Has("bufferView"))
        return accessor;

    if (accessor.elements.data == nullptr && accessor.elements.count > kMostZeros)
        field.Fail(fmt::format("{} elements without a buffer view are too many", accessor.elements.count));
    accessor.own = Packed(accessor.elements);
    accessor.elements.data = accessor.own.data();
    accessor.elements.stride = accessor.elements.type.SizeIn(accessor.elements.component);
    if (sparse)
        ResolveSparse(*sparse, accessor);
    return accessor;
}

void Accessors::ReadView(const Field& field, Elements& elements)
{
    const int view = field.Member("bufferView").IndexBelow(views_.Count());
    PointInto(field, views_.Get(static_cast<std::size_t>(view)), field.WholeOr("byteOffset", 0), elements);
}

void Accessors::ResolveSparse(const Field& sparse, Accessor& accessor)
{
    const Field indices = sparse.Member("indices");
    const Field values = sparse.Member("values");
    const std::size_t count = sparse.Member("count").Whole();
    Elements from = {.count = count, .type = {1, 1}};
    const Field component = indices.Member("componentType");
    from.component = static_cast<Component>(component.Whole());
    if (from.component != Component::UnsignedByte && from.component != Component::UnsignedShort &&
        from.component != Component::UnsignedInt)
        component.Fail(fmt::format("{} is not an unsigned integer type", component.Whole()));
    ReadView(indices, from);
    Elements replacements = {.count = count, .type = accessor.elements.type, .component = accessor.elements.component};
    ReadView(values, replacements);

    std::vector<std::uint32_t> targets(count);
    ToWholeNumbers(from, targets.data());
    const std::size_t size = accessor.elements.stride;
    for (std::size_t i = 0; i < count; ++i)
    {
        if (targets[i] >= accessor.elements.count)
            indices.Fail(fmt::format("{} is not below {}", targets[i], accessor.elements.count));
        std::memcpy(accessor.own.data() + targets[i] * size, replacements.data + i * replacements.stride, size);
    }
}

CarriedAccessor Accessors::Carry(const Field& reference, std::initializer_list<std::string_view> types)
{
    return Carry(Get(reference, types));
}

CarriedAccessor Accessors::Carry(const Accessor& accessor)
{
    CarriedAccessor carried;
    carried.componentType = static_cast<int>(accessor.elements.component);
    carried.type = accessor.typeName;
    carried.isNormalized = accessor.elements.isNormalized;
    carried.count = accessor.elements.count;
    carried.bytes = Packed(accessor.elements);
    if (accessor.index < 0)
        return carried;
    const Field field = list_->Element(static_cast<std::size_t>(accessor.index));
    if (const std::optional<Field> min = field.Find("min"))
        carried.min = min->Get();
    if (const std::optional<Field> max = field.Find("max"))
        carried.max = max->Get();
    return carried;
}

std::vector<float> Accessors::Floats(const Field& reference, std::initializer_list<std::string_view> types)
{
    const Accessor accessor = Get(reference, types);
    std::vector<float> floats(accessor.elements.count * accessor.elements.type.Count());
    ToFloats(accessor.elements, floats.data());
    return floats;
}

}  // namespace Sceneprep::GltfImport
