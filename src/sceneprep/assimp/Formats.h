#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Kinds of scene content other than triangles and node transforms.
enum class Content
{
    Cameras,
    Lights,
    Movements,  ///< animations
    Skins,
    Materials,
    Textures,
    TexturePlacements,  ///< texture transforms (map matrices)
    UVs,
    FurtherUVs  ///< UV sets after the first
};

/// A file format that models can be written in.
struct WriteFormat
{
    std::string id;           ///< Assimp's id of the exporter
    std::string extension;    ///< lower case, without the dot
    std::string description;  ///< shown by `sceneprep formats`

    /// True if world matrices are baked into the meshes: the format has no hierarchy, or Assimp writes or reads the
    /// hierarchy wrongly.
    bool IsFlat() const;
    /// False if the exporter drops the content. Content that depends on dropped content counts as held: texture
    /// transforms in a format without textures.
    bool Holds(Content content) const;
    /// True if Assimp writes the children of the root node and drops the root itself.
    bool LosesRoot() const;
    /// False if nodes have scale, rotation and translation instead of a matrix, so that shear is lost.
    bool HoldsShear() const;
    /// True if z points up in every file of the format.
    bool IsZUp() const;
    /// Returns how many vertices, and how many triangles, a mesh of this format may have.
    std::size_t LargestMesh() const;
    bool IsGltf() const;
    /// Returns the characters that must not be in names, because the exporter does not escape them and the file breaks.
    std::string UnwritableLetters() const;
    bool IsObj() const;
    bool Is3mf() const;
    /// True if images are embedded in the model file.
    bool HoldsPictures() const;
};

/// Finds the format by the file's extension, ignoring case; none if the extension is unknown. Where several formats
/// share an extension, .gltf and .glb mean glTF 2.0, .ply and .stl the binary form, .fbx the text form, because Assimp
/// cannot read the binary form that it writes.
std::optional<WriteFormat> FindWriteFormat(const std::filesystem::path& file);

/// Returns one format for each extension that can be written, sorted by extension. Deliberate: .pbrt is missing,
/// because Assimp writes it into the working directory or not at all.
std::vector<WriteFormat> ListWriteFormats();

/// Returns the file extensions that can be read, without the dot, sorted.
std::vector<std::string> ListReadExtensions();

}  // namespace Sceneprep
