#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A format that models can be written in.
struct WriteFormat
{
    std::string id;           ///< the exporter's name for it
    std::string extension;    ///< lower case, without the dot
    std::string description;  ///< for people

    /// Formats without a hierarchy: world matrices are worked into the meshes.
    bool IsFlat() const;
    /// False where the exporter drops them.
    bool HoldsCamerasAndLights() const;
    bool IsGltf() const;
    /// False where a name that goes over several lines would break the file.
    bool HoldsLineBreaks() const;
    bool IsObj() const;
};

/// @return the format that the ending of the file's name stands for, in either case of letters; none when there is no
///         such format. Where several formats share an ending, .gltf and .glb mean glTF 2.0, .ply and .stl the binary
///         form.
std::optional<WriteFormat> FindWriteFormat(const std::filesystem::path& file);

/// @return one format for each ending that can be written, sorted by ending.
std::vector<WriteFormat> ListWriteFormats();

/// @return the endings that can be read, without the dot, sorted.
std::vector<std::string> ListReadExtensions();

}  // namespace Sceneprep
