#pragma once

#include <importing/plugin/SceneContainer.h>

#include <array>
#include <functional>

namespace Sceneprep
{

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

WorldPoint CarryToWorld(const D3DXVECTOR3& position, const D3DXMATRIX& world);

bool IsFinite(const WorldPoint& point);

}  // namespace Sceneprep
