#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/Skeletons.h>
#include <sceneprep/export/gltf/Animations.h>

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Sceneprep::Gltf
{

/// Writes skeletons: which joints are nodes of the scene and which get nodes of their own says Skeletons.
///
/// Readers tie joints to nodes by name, so every node that is a joint has a name that no other node has.
class SkinWriter
{
public:
    SkinWriter(Importing::SceneContainer& scene, const Pipeline::NodeWalk& walk, Buffers& buffers,
               AnimationWriter& animations, tinygltf::Model& model);

    /// Finds the nodes of a mesh's joints. To be called for every node that shows a skinned mesh before anything else.
    void Announce(int geometry, int node);

    /// @return the name of a scene's node in the file.
    std::string NameOf(int node);

    /// Adds the nodes of joints that are no nodes of the scene.
    /// @param carriers  [nodes] the file's node that carries the children of a scene's node; those of the joint nodes
    ///                  are put behind them
    void AddJointNodes(std::vector<int>& carriers);

    /// Adds the skin that ties a mesh to its joints, unless there is the same one.
    /// @return the skin's index.
    int Add(int geometry, int node, const std::vector<int>& carriers);

private:
    using Matrices = std::vector<std::array<float, 16>>;

    void Prepare();
    std::string UniqueName(const std::string& wanted);
    int AddNode(const Pipeline::JointNode& joint, const std::string& name);
    int AddInverseBinds(Importing::Geometry& geometry);

    Importing::SceneContainer& scene_;
    Buffers& buffers_;
    AnimationWriter& animations_;
    tinygltf::Model& model_;
    const Pipeline::NodeWalk& walk_;
    std::optional<Pipeline::Skeletons> skeletons_;              // none while no mesh is announced
    std::map<std::pair<int, int>, std::vector<int>> jointsOf_;  // by geometry and node that shows it
    std::vector<bool> isJoint_;                                 // by node of the scene
    std::map<std::string, std::size_t> nameUses_;               // by name that a node of the file may have
    std::map<Matrices, int> inverseBinds_;
    std::map<std::pair<std::vector<int>, int>, int> skins_;  // by joints and inverse bind matrices
};

}  // namespace Sceneprep::Gltf
