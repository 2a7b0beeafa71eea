#pragma once

#include <sceneprep/import/gltf/Accessors.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Carried.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Sceneprep::GltfImport
{

/// The values of one attribute of a primitive's vertices.
struct Attribute
{
    std::string_view name;  ///< a key of the document, as "POSITION"
    Field reference;        ///< the number of its accessor
    Accessor values;
};

/// A primitive of a mesh, decompressed, whose accessors have been checked against each other.
struct Primitive
{
    int mode = 4;
    std::size_t vertexCount = 0;
    std::optional<Accessor> indices = {};
    std::vector<Attribute> attributes = {};  ///< all have vertexCount values
    std::vector<std::vector<Attribute>> targets = {};

    const Attribute* Find(std::string_view name) const;
    bool HasTriangles() const { return mode >= 4; }
};

/// Points, lines and triangles by their mode.
inline constexpr int kPoints = 0;
inline constexpr int kLines = 1;
inline constexpr int kLineLoop = 2;
inline constexpr int kLineStrip = 3;
inline constexpr int kTriangles = 4;
inline constexpr int kTriangleStrip = 5;
inline constexpr int kTriangleFan = 6;

/// Reads a primitive of a mesh. Returns nothing for a primitive without positions, which the format allows but which is
/// not drawn.
/// @throws FormatError if accessors are missing, have the wrong type, or different lengths.
std::optional<Primitive> ReadPrimitive(const Field& primitive, Accessors& accessors, BufferViews& views);

/// Copies the stored numbers of a primitive.
CarriedPrimitive Carry(const Primitive& primitive, Accessors& accessors);

}  // namespace Sceneprep::GltfImport
