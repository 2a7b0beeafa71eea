#pragma once

#include <importing/plugin/SceneContainer.h>

#include <array>
#include <cmath>
#include <functional>

namespace Pipeline
{

/// @return whether the mesh shows something: triangles, and at least one of them.
bool HasTriangles(const Importing::Geometry& geometry);

/// A mesh of triangles where a node below the root, or the root itself, shows it.
struct ShownSurface
{
    int node = -1;
    Importing::Surface& surface;
    Importing::Geometry& geometry;
    const D3DXMATRIX& world;
};

/// Calls for every listing of a surface that shows triangles: nodes in the order of the walk from the root, surfaces
/// in the order of their list.
/// @throws std::out_of_range when an index of the scene, or of a mesh, leads nowhere.
void ForEachShownSurface(Importing::SceneContainer& scene, const std::function<void(const ShownSurface&)>& visit);

/// A place in the world, in double precision.
using WorldPoint = std::array<double, 3>;

inline WorldPoint CarryToWorld(const D3DXVECTOR3& p, const D3DXMATRIX& m)
{
    WorldPoint result{};
    for (unsigned c = 0; c < 3; ++c)
        result[c] = static_cast<double>(p.x) * m(0, c) + static_cast<double>(p.y) * m(1, c) +
                    static_cast<double>(p.z) * m(2, c) + m(3, c);
    return result;
}

inline bool IsFinite(const WorldPoint& p) { return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]); }

}  // namespace Pipeline
