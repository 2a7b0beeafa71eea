#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/Vector3.h>

#include <cmath>
#include <functional>

namespace Pipeline
{

/// Returns whether the mesh has at least one triangle.
bool HasTriangles(const Importing::Geometry& geometry);

/// A mesh of triangles that the root, or a node below it, references.
struct ShownSurface
{
    int node = -1;
    Importing::Surface& surface;
    Importing::Geometry& geometry;
    const D3DXMATRIX& world;
};

/// Calls `visit` for every reference to a surface with triangles: nodes in the order of the walk from the root,
/// surfaces in the order of their list.
/// @throws std::out_of_range if an index of the scene or of a mesh is not valid.
void ForEachShownSurface(Importing::SceneContainer& scene, const std::function<void(const ShownSurface&)>& visit);

/// A position in the world, in double precision.
using WorldPoint = Vector3;

/// Returns the position transformed by the matrix, computed in double precision.
inline WorldPoint ToWorld(const D3DXVECTOR3& p, const D3DXMATRIX& m)
{
    WorldPoint result{};
    for (unsigned c = 0; c < 3; ++c)
        result[c] = static_cast<double>(p.x) * m(0, c) + static_cast<double>(p.y) * m(1, c) +
                    static_cast<double>(p.z) * m(2, c) + m(3, c);
    return result;
}

inline bool IsFinite(const WorldPoint& p) { return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]); }

}  // namespace Pipeline
