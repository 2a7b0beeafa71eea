#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// A bone of a mesh in a file, and its node in the scene.
struct Bone
{
    std::string name;
    D3DXMATRIX bindPoseInverse;
    int node = -1;  ///< -1 if the hierarchy has no such node
};

/// The joints of a mesh, relative to one of the nodes that reference it.
struct MeshJoints
{
    std::vector<Importing::Joint> joints;
    bool isPlaced =
        true;  ///< false if the world matrix of the mesh's node is singular, so that joints cannot be placed
};

/// Makes joints of bones, in the order of the bones.
///
/// The parent of a joint is the nearest bone among the ancestors of its node. Its local matrix is relative to the
/// parent or, for a root joint, to the node that references the mesh; its animation is that of the node. A bone without
/// a node gets the transform of its bind pose.
///
/// Keys are relative to the parent of the node, and nodes between two bones may be animated. For the joints to move as
/// their nodes do, joints without weights are added after the bones where needed: first animated nodes between bones,
/// or above the topmost bones but not above the mesh; then parents of animated nodes whose transform differs from that
/// of the next joint or of the mesh. Such a parent is used by those animated nodes only.
///
/// @param parents  [nodes] index of the parent, -1 for the root
MeshJoints MakeJoints(Importing::SceneContainer& scene, const std::vector<int>& parents, const std::vector<Bone>& bones,
                      int meshNode);

}  // namespace Sceneprep
