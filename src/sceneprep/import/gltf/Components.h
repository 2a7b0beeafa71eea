#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The numbers of component types in the format.
enum class Component
{
    Byte = 5120,
    UnsignedByte = 5121,
    Short = 5122,
    UnsignedShort = 5123,
    UnsignedInt = 5125,
    Float = 5126
};

bool IsComponent(std::size_t number);
std::size_t SizeOf(Component component);

/// The layout of an accessor's elements.
struct ElementType
{
    std::size_t columns = 0;  ///< 1 except for matrices; 0 for an unknown type
    std::size_t rows = 0;

    std::size_t Count() const { return columns * rows; }
    /// Returns the size of one element in bytes. The columns of a matrix begin at multiples of 4 bytes.
    std::size_t SizeIn(Component component) const;
};

/// @param name  as "VEC3"
ElementType ElementTypeOf(std::string_view name);

/// Elements in memory, little-endian.
struct Elements
{
    const std::uint8_t* data = nullptr;
    std::size_t count = 0;
    std::size_t stride = 0;  ///< from one element to the next, in bytes
    ElementType type = {};
    Component component = Component::Float;
    bool isNormalized = false;
};

/// Writes all components as floats, tightly packed. Normalised integers become numbers from 0 or -1 to 1, as the
/// format defines.
/// @param floats  [count * type.Count()]
void ToFloats(const Elements& elements, float* floats);

/// Writes all components of unsigned integers, tightly packed. Other component types are not expected.
/// @param numbers  [count * type.Count()]
void ToWholeNumbers(const Elements& elements, std::uint32_t* numbers);

}  // namespace Sceneprep::GltfImport
