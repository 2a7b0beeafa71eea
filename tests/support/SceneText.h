#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>
#include <importing/plugin/SceneContainer.h>

#include <string>

namespace Support
{

/// Returns the scene that one line of text describes, so that a test shows its input and its result.
///
///   "Root( P@1,0,0( Q[box lid=box:red]{eye}<sun> ) S* ) | Orphan( &Q )"
///
/// Nodes are numbered in the order of the text, and the first one is the root. An empty text has no root. "|" separates
/// nodes without parent. The name of a node is followed by, in any order:
///
///   @x,y,z       its translation
///   *            the node is animated (by its own animation of one default key)
///   [a b=m:c]    its surfaces; b uses mesh m and material c. Without "=" a surface uses a mesh of its own name,
///                without ":" no material. A name that occurs again means the same surface, mesh or material.
///   {a} <a>      its cameras, its lights
///   ( A B )      its children; &A references an earlier node again
///
/// Every mesh is UnitBox().
/// @throws std::invalid_argument when the text has a syntax error.
Importing::SceneContainer Scene(const std::string& text);

/// Returns a scene as text: the root with everything below it, then all other nodes without parent. The text contains
/// names, animation marks and lists, but no transforms, meshes and materials. "-" means a root that is not a valid
/// index, "_" an empty name, "?" a bad index, and &A a node that the text already contains.
std::string ToText(const Importing::SceneContainer& scene);

/// Returns a box of eight vertices and twelve triangles that face outwards. Every normal points away from the centre.
Importing::Geometry BoxMesh(const D3DXVECTOR3& min, const D3DXVECTOR3& max);

/// Returns the box from (1, 1, 1) to (2, 2, 2). It is above 0, so that its bounds are those of its corners.
Importing::Geometry UnitBox();

/// Each function returns the first record with that name.
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
