#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A surface that shows a mesh with bones.
struct SkinnedSurface
{
    const aiMesh* mesh;
    int surface;
    int node;  ///< that lists it
};

/// Gives the vertices of a geometry the weights of a mesh, bone by bone: the index of a joint is that of the bone.
/// Weights of 0 say nothing and are not kept; the others are neither joined nor made to add up to 1.
/// @return how many weights are left out, because they are no finite numbers or name no vertex.
std::size_t ImportWeights(const aiMesh& mesh, Importing::Geometry& geometry);

/// Makes joints of the bones of meshes. Nodes and their animations must have been brought into the scene.
///
/// A bone is the node of its name; of several one that stands among other bones, that carries no surface, that is near
/// to the mesh in the hierarchy. Joints are placed in the
/// frame of the node that shows the mesh, so surfaces that see them at other places get a geometry of their own. A
/// skin follows its joints alone: where its node moves and they do not, it is listed by a new node that stands still.
/// The nodes of bones stay in the hierarchy.
///
/// @return what cannot be held as the file has it, one line each.
std::vector<std::string> ImportSkins(const std::vector<SkinnedSurface>& skinned, Importing::SceneContainer& scene);

}  // namespace Sceneprep
