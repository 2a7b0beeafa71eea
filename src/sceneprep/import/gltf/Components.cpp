#include <sceneprep/import/gltf/Components.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>

static_assert(std::endian::native == std::endian::little, "numbers are copied as they are in the file");

namespace Sceneprep::GltfImport
{

namespace
{

template <typename T>
T Load(const std::uint8_t* bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
}

/// Calls write(index, value) for all components in order; T is their type in the file.
template <typename T, typename Write>
void ForEachComponent(const Elements& elements, const Write& write)
{
    const std::size_t column = elements.type.SizeIn(elements.component) / elements.type.columns;
    std::size_t index = 0;
    for (std::size_t e = 0; e < elements.count; ++e)
    {
        const std::uint8_t* element = elements.data + e * elements.stride;
        for (std::size_t c = 0; c < elements.type.columns; ++c)
        {
            for (std::size_t r = 0; r < elements.type.rows; ++r)
                write(index++, Load<T>(element + c * column + r * sizeof(T)));
        }
    }
}

template <typename T>
void ConvertToFloats(const Elements& elements, float* floats)
{
    if (!elements.isNormalized || std::is_same_v<T, float>)
    {
        ForEachComponent<T>(elements, [floats](std::size_t i, T value) { floats[i] = static_cast<float>(value); });
        return;
    }
    constexpr auto kLargest = static_cast<double>(std::numeric_limits<T>::max());
    ForEachComponent<T>(elements, [floats](std::size_t i, T value) {
        floats[i] = static_cast<float>(std::max(static_cast<double>(value) / kLargest, -1.0));
    });
}

template <typename T>
void ConvertToWholeNumbers(const Elements& elements, std::uint32_t* numbers)
{
    ForEachComponent<T>(elements, [numbers](std::size_t i, T value) { numbers[i] = value; });
}

bool AreTightFloats(const Elements& elements)
{
    return elements.component == Component::Float && elements.stride == elements.type.Count() * sizeof(float);
}

struct NamedType
{
    std::string_view name;
    ElementType type;
};

constexpr std::array<NamedType, 7> kElementTypes = {{{"SCALAR", {1, 1}},
                                                     {"VEC2", {1, 2}},
                                                     {"VEC3", {1, 3}},
                                                     {"VEC4", {1, 4}},
                                                     {"MAT2", {2, 2}},
                                                     {"MAT3", {3, 3}},
                                                     {"MAT4", {4, 4}}}};

}  // namespace

bool IsComponent(std::size_t number) { return number >= 5120 && number <= 5126 && number != 5124; }

std::size_t SizeOf(Component component)
{
    switch (component)
    {
        case Component::Byte:
        case Component::UnsignedByte:
            return 1;
        case Component::Short:
        case Component::UnsignedShort:
            return 2;
        case Component::UnsignedInt:
        case Component::Float:
            break;
    }
    return 4;
}

std::size_t ElementType::SizeIn(Component component) const
{
    const std::size_t column = rows * SizeOf(component);
    return columns == 1 ? column : columns * ((column + 3) / 4 * 4);
}

ElementType ElementTypeOf(std::string_view name)
{
    const auto* found = std::find_if(kElementTypes.begin(), kElementTypes.end(),
                                     [&](const NamedType& type) { return type.name == name; });
    return found == kElementTypes.end() ? ElementType() : found->type;
}

void ToFloats(const Elements& elements, float* floats)
{
    if (elements.count == 0)
        return;
    if (AreTightFloats(elements))
    {
        std::memcpy(floats, elements.data, elements.count * elements.stride);
        return;
    }
    switch (elements.component)
    {
        case Component::Byte:
            return ConvertToFloats<std::int8_t>(elements, floats);
        case Component::UnsignedByte:
            return ConvertToFloats<std::uint8_t>(elements, floats);
        case Component::Short:
            return ConvertToFloats<std::int16_t>(elements, floats);
        case Component::UnsignedShort:
            return ConvertToFloats<std::uint16_t>(elements, floats);
        case Component::UnsignedInt:
            return ConvertToFloats<std::uint32_t>(elements, floats);
        case Component::Float:
            return ConvertToFloats<float>(elements, floats);
    }
}

void ToWholeNumbers(const Elements& elements, std::uint32_t* numbers)
{
    switch (elements.component)
    {
        case Component::UnsignedByte:
            return ConvertToWholeNumbers<std::uint8_t>(elements, numbers);
        case Component::UnsignedShort:
            return ConvertToWholeNumbers<std::uint16_t>(elements, numbers);
        default:
            return ConvertToWholeNumbers<std::uint32_t>(elements, numbers);
    }
}

}  // namespace Sceneprep::GltfImport
