#pragma once

#include <sceneprep/model/Json.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace Sceneprep
{

/// A file of glTF 2.0 whose JSON text has been parsed and nothing else looked at.
struct GltfFile
{
    std::filesystem::path path;
    Json document;
    /// The binary chunk of a .glb file; none for .gltf files, and for .glb files without one.
    std::optional<std::vector<std::uint8_t>> binary = {};
};

/// Returns whether the file's extension is .gltf or .glb, in upper or lower case.
bool HasGltfExtension(const std::filesystem::path& file);

/// Opens a file; the first bytes decide between the text form and the binary one.
/// @return none for a file of glTF 1.0, which is another format.
/// @throws ToolError when the file cannot be read, is truncated, or is not glTF.
std::optional<GltfFile> OpenGltf(const std::filesystem::path& file);

}  // namespace Sceneprep
