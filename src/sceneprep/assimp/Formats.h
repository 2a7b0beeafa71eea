#pragma once

#include <cstddef>
#include <filesystem>
#include <limits>
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
    Animations,
    Skins,
    Materials,
    Textures,
    TextureTransforms,  ///< map matrices
    UVs,
    FurtherUVs  ///< UV sets after the first
};

/// The capabilities of a format, as Assimp or this program writes it.
struct FormatTraits
{
    std::vector<Content> lacks = {};
    bool isFlat = false;
    bool losesRoot = false;
    bool holdsShear = true;
    bool isZUp = false;
    bool embedsImages = false;
    std::size_t largestMesh = std::numeric_limits<std::size_t>::max();
    const char* unwritableCharacters = "";
};

/// A file format that models can be written in: one row of a table, which is in Formats.cpp.
struct WriteFormat
{
    std::string extension;    ///< lower case, without the dot
    std::string id;           ///< Assimp's id of the exporter
    std::string description;  ///< shown by `sceneprep formats`
    FormatTraits traits = {};

    /// True if world matrices are baked into the meshes: the format has no hierarchy, or Assimp writes or reads the
    /// hierarchy wrongly.
    bool IsFlat() const { return traits.isFlat; }
    /// False if the exporter drops the content. Content that depends on dropped content counts as held: texture
    /// transforms in a format without textures.
    bool Holds(Content content) const;
    /// True if Assimp writes the children of the root node and drops the root itself.
    bool LosesRoot() const { return traits.losesRoot; }
    /// False if nodes have scale, rotation and translation instead of a matrix, so that shear is lost.
    bool HoldsShear() const { return traits.holdsShear; }
    /// True if z points up in every file of the format.
    bool IsZUp() const { return traits.isZUp; }
    /// Returns how many vertices, and how many triangles, a mesh of this format may have.
    std::size_t LargestMesh() const { return traits.largestMesh; }
    /// Returns the characters that must not be in names, because the exporter does not escape them and the file breaks.
    std::string UnwritableCharacters() const { return traits.unwritableCharacters; }
    /// True if images are embedded in the model file.
    bool EmbedsImages() const { return traits.embedsImages; }
    bool IsGltf() const { return extension == "gltf" || extension == "glb"; }
    bool IsObj() const { return extension == "obj"; }
    bool Is3mf() const { return extension == "3mf"; }
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

/// Returns true if the file has an extension of glTF.
bool IsGltfFile(const std::filesystem::path& file);

/// Returns the formats that can be written and the extensions that can be read, as `sceneprep formats` prints them.
std::string FormatsText();

/// Returns a Markdown table of the formats that can be written, with what each one holds.
std::string FormatsTable();

}  // namespace Sceneprep
