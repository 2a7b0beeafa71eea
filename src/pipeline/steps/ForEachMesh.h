#pragma once

#include <pipeline/scene/PartCounter.h>
#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorkScene.h>

#include <cstddef>

namespace Pipeline
{

/// Returns the number of vertices of all meshes.
inline std::size_t CountVertices(const Importing::SceneContainer& scene)
{
    std::size_t count = 0;
    for (const Importing::Geometry& geometry : scene.GeometryLibrary)
        count += geometry.VertexArray.size();
    return count;
}

/// Calls visit(index, geometry) once for each mesh that steps may change: neither emptied nor pinned. Reports progress
/// by vertices, since large meshes take longer.
template <typename Visit>
void ForEachMesh(const WorkScene& scene, const PartListener& listener, Visit visit)
{
    PartCounter counter(listener, CountVertices(scene.container));
    for (std::size_t index = 0; index < scene.container.GeometryLibrary.size(); ++index)
    {
        Importing::Geometry& geometry = scene.container.GeometryLibrary[index];
        const std::size_t vertices = geometry.VertexArray.size();
        if (!IsEmptied(geometry) && !IsPinned(scene.supplement, index))
            visit(index, geometry);
        if (vertices > 0)
            counter.Add(vertices);
    }
}

}  // namespace Pipeline
