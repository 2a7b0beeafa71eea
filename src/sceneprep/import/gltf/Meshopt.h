#pragma once

#include <sceneprep/import/gltf/Field.h>

#include <cstdint>
#include <span>
#include <vector>

namespace Sceneprep::GltfImport
{

/// Decodes a buffer view that EXT_meshopt_compression or KHR_meshopt_compression has compressed.
/// @param extension  the extension's object: count, byteStride, mode and filter
/// @return count elements of byteStride bytes.
/// @throws FormatError when the bytes cannot be decoded, or were encoded by a version of the codec that is not known.
std::vector<std::uint8_t> DecodeMeshopt(const Field& extension, std::span<const std::uint8_t> encoded);

}  // namespace Sceneprep::GltfImport
