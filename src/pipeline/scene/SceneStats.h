#pragma once

#include <importing/plugin/SceneContainer.h>

#include <array>
#include <cstddef>
#include <utility>

namespace Pipeline
{

/// The number of records in a scene. A mesh counts once, regardless of the number of surfaces that reference it.
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
    std::size_t animations = 0;  ///< those that a node or a joint refers to

    friend bool operator==(const SceneStats&, const SceneStats&) = default;

    /// The counts with their names, in the order in which they are printed.
    std::array<std::pair<const char*, std::size_t>, 11> Rows() const;
};

/// Counts the records of the scene in linear time. Changes nothing.
SceneStats CountScene(Importing::SceneContainer& scene);

/// Returns whether merging has emptied the surface: it has no mesh, no material and no maps.
bool IsEmptied(const Importing::Surface& surface);

/// Returns whether the mesh has neither vertices nor indices.
bool IsEmptied(const Importing::Geometry& geometry);

}  // namespace Pipeline
