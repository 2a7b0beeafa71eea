#pragma once

#include <importing/plugin/SceneContainer.h>

#include <string>
#include <vector>

namespace Sceneprep
{

/// A bone of a mesh in a file, and the node that it is.
struct Bone
{
    std::string name;
    D3DXMATRIX bindPoseInverse;
    int node = -1;  ///< -1 when the hierarchy holds none
};

/// The joints of a mesh as one of its nodes sees them.
struct MeshJoints
{
    std::vector<Importing::Joint> joints;
    bool isPlaced = true;  ///< false when the mesh's node flattens, so that nothing can be placed in its frame
};

/// Makes joints of bones, in the order of the bones.
///
/// A joint's parent is the nearest bone among the ancestors of its node, its local matrix the placement in the
/// parent's frame or, for a root, in that of the node that shows the mesh; its animation is the node's. A bone without
/// a node stands where it stood when the mesh was bound.
///
/// Keys place a node in its parent's frame, and a node between two bones may move. So that joints move as their nodes
/// do, further joints without weights follow the bones where they are needed: animated nodes between bones, or above
/// the uppermost ones and not above the mesh; then the parents of animated nodes that stand elsewhere than the next
/// joint, or the mesh, each for those animated nodes alone.
///
/// @param parents  [nodes] index of the parent, -1 for the root
MeshJoints MakeJoints(Importing::SceneContainer& scene, const std::vector<int>& parents, const std::vector<Bone>& bones,
                      int meshNode);

}  // namespace Sceneprep
