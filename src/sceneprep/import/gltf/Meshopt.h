#pragma once

#include <sceneprep/import/gltf/Field.h>

#include <cstdint>
#include <span>
#include <vector>

namespace Sceneprep::GltfImport
{

/// Decodes a buffer view that is compressed by EXT_meshopt_compression or KHR_meshopt_compression.
/// @param extension  the extension's object: count, byteStride, mode and filter
/// @return `count` elements of `byteStride` bytes
/// @throws FormatError if the bytes cannot be decoded, or have an unknown version of the encoding.
std::vector<std::uint8_t> DecodeMeshopt(const Field& extension, std::span<const std::uint8_t> encoded);

}  // namespace Sceneprep::GltfImport
