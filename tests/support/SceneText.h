#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>
#include <importing/plugin/SceneContainer.h>

#include <string>

namespace Support
{

/// A scene in one line, so that a test shows at a glance what goes in and what comes out.
///
///   "Root( P@1,0,0( Q[box lid=box:red]{eye}<sun> ) S* ) | Orphan( &Q )"
///
/// Nodes are numbered in the order in which they stand; the first one is the root, the scene's text being empty when
/// there is none. "|" parts what has no parent. Behind a node's name stand, in any order:
///
///   @x,y,z       its translation
///   *            it is animated (by an animation of one default key, its own)
///   [a b=m:c]    its surfaces; b uses mesh m and material c. Without "=" a surface uses a mesh of its own name,
///                without ":" no material. A surface, mesh or material that was named before is the same one.
///   {a} <a>      its cameras, its lights
///   ( A B )      its children; &A lists an earlier node once more
///
/// Every mesh is UnitBox().
/// @throws std::invalid_argument when the text cannot be read.
Importing::SceneContainer Scene(const std::string& text);

/// The root with all that lies below it, then whatever has no parent. Names, animation marks and lists are told,
/// places, meshes and materials are not. "-" stands for a root that designates no node, "_" for an empty name, "?" for
/// a bad index, &A for a node that was told already.
std::string ToText(const Importing::SceneContainer& scene);

/// Eight vertices, twelve triangles that look outwards; every normal points away from the box's centre.
Importing::Geometry BoxMesh(const D3DXVECTOR3& min, const D3DXVECTOR3& max);

/// From (1, 1, 1) to (2, 2, 2): above 0, so that its bounds are the corners'.
Importing::Geometry UnitBox();

/// The first record of that name.
/// @throws std::invalid_argument when there is none.
/// @{
int NodeIndex(const Importing::SceneContainer& scene, const std::string& name);
Importing::Node& NodeNamed(Importing::SceneContainer& scene, const std::string& name);
Importing::Surface& SurfaceNamed(Importing::SceneContainer& scene, const std::string& name);
Importing::Geometry& MeshOf(Importing::SceneContainer& scene, const std::string& surfaceName);
/// @}

D3DXMATRIX Translation(float x, float y, float z);
D3DXMATRIX Scaling(float x, float y, float z);
D3DXMATRIX Product(const D3DXMATRIX& a, const D3DXMATRIX& b);

}  // namespace Support
