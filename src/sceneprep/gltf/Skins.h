#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/gltf/Animations.h>

namespace Sceneprep::Gltf
{

/// Writes skeletons. The joints of a mesh become nodes below the node that shows it, in the mesh's frame; every node
/// that shows the mesh gets its own, since the placement of a joint is that of its node.
class SkinWriter
{
public:
    SkinWriter(Importing::SceneContainer& scene, Buffers& buffers, AnimationWriter& animations, tinygltf::Model& model);

    /// Adds the joints below a node, and the skin that ties them to the mesh. Joints whose parent is none, is unknown
    /// or is the joint's own descendant stand directly below the node.
    /// @return the skin's index.
    int Add(Importing::Geometry& geometry, int node);

private:
    int AddJoint(Importing::Joint& joint);
    int AddInverseBinds(Importing::Geometry& geometry);

    Importing::SceneContainer& scene_;
    Buffers& buffers_;
    AnimationWriter& animations_;
    tinygltf::Model& model_;
    std::map<const Importing::Geometry*, int> inverseBinds_;
};

}  // namespace Sceneprep::Gltf
