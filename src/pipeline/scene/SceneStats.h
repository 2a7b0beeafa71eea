#pragma once

#include <importing/plugin/SceneContainer.h>

#include <array>
#include <cstddef>
#include <utility>

namespace Pipeline
{

/// What a scene holds. Meshes count once, however many surfaces show them.
struct SceneStats
{
    std::size_t nodes = 0;
    std::size_t surfaces = 0;    ///< without those that merging emptied
    std::size_t geometries = 0;  ///< without those that merging emptied
    std::size_t vertices = 0;
    std::size_t triangles = 0;
    std::size_t materials = 0;
    std::size_t textures = 0;
    std::size_t cameras = 0;
    std::size_t lights = 0;
    std::size_t joints = 0;      ///< of all meshes
    std::size_t animations = 0;  ///< those that a node or a joint plays

    friend bool operator==(const SceneStats&, const SceneStats&) = default;

    /// The counts with their names, in the order in which they are shown.
    std::array<std::pair<const char*, std::size_t>, 11> Rows() const;
};

/// Counts what the scene holds. Computes nothing and changes nothing.
SceneStats CountScene(Importing::SceneContainer& scene);

/// @return whether the surface is one that was emptied: no mesh, no material, no maps.
bool IsEmptied(const Importing::Surface& surface);

/// @return whether the mesh has neither vertices nor indices.
bool IsEmptied(const Importing::Geometry& geometry);

}  // namespace Pipeline
