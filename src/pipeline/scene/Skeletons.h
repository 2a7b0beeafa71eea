#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/Hierarchy.h>
#include <pipeline/scene/WorkScene.h>

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace Pipeline
{

/// A node for a joint that is not a node of the hierarchy.
struct JointNode
{
    std::string name;
    int parent;  ///< index of a node of the scene; joint nodes have the indices after the last one
    D3DXMATRIX local;
    int animation;  ///< -1 for none
};

/// Finds the nodes of the joints of a scene's meshes, for file formats in which joints are nodes.
///
/// A joint is a node of the hierarchy if both have the same name, animation and world transform, and the same nearest
/// animated node above them; with an animation, their parents must have the same world transform, too. Any other joint
/// becomes a joint node: below the node of its parent or, for a root, below the node that references the mesh. Equal
/// joints of several meshes share a joint node; two joints of one mesh never do. So a skeleton that was read as nodes
/// is found again, and meshes of one skeleton share it.
class Skeletons
{
public:
    /// Takes time linear in the number of nodes. The scene must not change as long as the object exists.
    Skeletons(Importing::SceneContainer& scene, const NodeWalk& walk);

    /// Finds or adds the node of each joint of a mesh. A joint with an invalid parent, or with a parent that is its own
    /// descendant, is a root.
    /// @param node  a node of the walk that references the mesh
    /// @return [joints] index of a node of the scene, or of a joint node: these have the indices after the last node
    std::vector<int> Find(Importing::Geometry& geometry, int node);

    /// The joint nodes of all meshes that Find() was called for; parents before children.
    const std::vector<JointNode>& JointNodes() const { return jointNodes_; }

private:
    /// The position of a node in the world, and what animates it.
    struct Place
    {
        D3DXMATRIX world;
        D3DXMATRIX frame;  ///< the world matrix of the parent
        int animation = -1;
        int mover = -1;         ///< the nearest animated node above, -1 for none
        std::size_t taken = 0;  ///< number of the call of Find() that last used the node
    };

    int AnimationOf(int animation) const;
    int MoverBelow(int node) const;
    void Enter(const std::string& name, const Place& place, int node);
    int FindSame(const std::string& name, const Place& place, float distance) const;
    int FindOrAdd(Importing::Joint& joint, int parent, float distance);

    Importing::SceneContainer& scene_;
    std::vector<Place> places_;  // by node of the scene, then by joint node
    std::map<std::tuple<std::string, int, int>, std::vector<int>> candidates_;  // by name, animation and mover
    std::vector<JointNode> jointNodes_;
    std::size_t meshes_ = 0;  // calls of Find()
};

/// Returns for each joint [joints] its parent; -1 for roots. A joint with an invalid parent becomes a root, and so does
/// one joint of each cycle of parents. Takes linear time.
std::vector<int> JointParents(Importing::Geometry& geometry);

/// Returns whether the surface's mesh has joints.
bool IsSkinned(const Importing::SceneContainer& scene, int surface);

/// Returns whether a matrix may be baked into the surface's mesh: it has one, without joints, neither pinned nor
/// shared.
bool IsBakeable(const WorkScene& scene, int surface);

/// A mesh with joints, and a node that references it.
struct SkinnedMesh
{
    int geometry;
    int node;
};

/// Returns every reference to a skinned surface, in the order of the walk.
std::vector<SkinnedMesh> ListSkinnedMeshes(const Importing::SceneContainer& scene, const NodeWalk& walk);

/// Returns for each node [nodes] whether it is a joint of a mesh.
std::vector<bool> FindJointNodes(Importing::SceneContainer& scene, const NodeWalk& walk);

}  // namespace Pipeline
