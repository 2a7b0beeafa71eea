#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/run/Notes.h>

#include <cstddef>
#include <vector>

namespace Sceneprep
{

/// A surface whose mesh has bones.
struct SkinnedSurface
{
    const aiMesh* mesh;
    int surface;
    int node;  ///< that references the surface
};

/// Adds the weights of a mesh to the vertices of a geometry, bone by bone: the joint index is the index of the bone.
/// Weights of 0 are skipped; the others are neither merged nor normalised.
/// @return the number of weights that are dropped because they are not finite or refer to a missing vertex
std::size_t ImportWeights(const aiMesh& mesh, Importing::Geometry& geometry);

/// Makes joints of the bones of meshes. Nodes and their animations must be in the scene already.
///
/// A bone is the node with its name. If several nodes have the name, nodes next to other bones, without surfaces and
/// near the mesh in the hierarchy are preferred. Joints are relative to the node that references the mesh, so surfaces
/// with other joint transforms get a copy of the geometry. Only joints move a skin: if its node is animated and the
/// joints do not move with it, a new node without animation references the surface. The nodes of bones stay in the
/// hierarchy.
///
/// @return a note for each kind of content that differs from the file; a loss where vertices move differently
Notes ImportSkins(const std::vector<SkinnedSurface>& skinned, Importing::SceneContainer& scene);

}  // namespace Sceneprep
