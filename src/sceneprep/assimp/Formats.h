#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// What a scene may hold beside triangles and their places.
enum class Content
{
    Cameras,
    Lights,
    Movements,
    Skins,
    Materials,
    Textures,
    TexturePlacements,  ///< map matrices
    UVs,
    FurtherUVs  ///< sets beyond the first
};

/// A format that models can be written in.
struct WriteFormat
{
    std::string id;           ///< the exporter's name for it
    std::string extension;    ///< lower case, without the dot
    std::string description;  ///< for people

    /// True where world matrices are worked into the meshes: the format has no hierarchy, or the model library writes
    /// or reads it wrongly.
    bool IsFlat() const;
    /// False where the exporter drops it. What goes with something that is dropped counts as held: texture placements
    /// where there are no textures.
    bool Holds(Content content) const;
    /// True where the model library writes what stands below the root, and not the root itself.
    bool LosesRoot() const;
    /// False where nodes are placed by scale, rotation and translation, so that they cannot shear.
    bool HoldsShear() const;
    /// True where z points up in every file.
    bool IsZUp() const;
    /// How many vertices, and how many triangles, a mesh of this format may have.
    std::size_t LargestMesh() const;
    bool IsGltf() const;
    /// Letters that break a file when a name holds them, for its exporter writes names as they are.
    std::string UnwritableLetters() const;
    bool IsObj() const;
    bool Is3mf() const;
    /// True where pictures lie in the model file itself.
    bool HoldsPictures() const;
};

/// @return the format that the ending of the file's name stands for, in either case of letters; none when there is no
///         such format. Where several formats share an ending, .gltf and .glb mean glTF 2.0, .ply and .stl the binary
///         form, .fbx the textual one, since the model library cannot read what it writes in the other.
std::optional<WriteFormat> FindWriteFormat(const std::filesystem::path& file);

/// @return one format for each ending that can be written, sorted by ending. Not among them is .pbrt: the model library
///         writes it into the working folder, if at all.
std::vector<WriteFormat> ListWriteFormats();

/// @return the endings that can be read, without the dot, sorted.
std::vector<std::string> ListReadExtensions();

}  // namespace Sceneprep
