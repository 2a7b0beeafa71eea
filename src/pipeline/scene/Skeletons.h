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

/// A node that stands for a joint where the hierarchy holds none that does.
struct JointNode
{
    std::string name;
    int parent;  ///< a node of the scene, or a joint node, counted on from those of the scene
    D3DXMATRIX local;
    int animation;  ///< -1 for none
};

/// Finds the nodes that the joints of a scene's meshes are, for what knows joints only as nodes.
///
/// A joint is a node of the hierarchy when the two have one name, play one animation in the same frame, stand at the
/// same place, and are moved by the same node above them. Other joints are joint nodes, below the node of their parent
/// or, for roots, below the node that shows the mesh; joints of several meshes share one where they are the same in
/// that sense, but two joints of one mesh never do. So a skeleton that came as nodes is found again, and meshes of one
/// skeleton keep one.
class Skeletons
{
public:
    /// The scene must not change while the skeletons are looked for.
    Skeletons(Importing::SceneContainer& scene, const NodeWalk& walk);

    /// @param node  a node of the walk that shows the mesh
    /// @return [joints] nodes of the scene, or joint nodes, counted on from those of the scene. A joint whose parent is
    ///         unknown or its own descendant counts as a root.
    std::vector<int> Find(Importing::Geometry& geometry, int node);

    /// Grows with every mesh that is asked for; parents stand before their children.
    const std::vector<JointNode>& JointNodes() const { return jointNodes_; }

private:
    /// Where a node stands, and what moves it.
    struct Place
    {
        D3DXMATRIX world;
        D3DXMATRIX frame;  ///< the world matrix of the parent
        int animation = -1;
        int mover = -1;         ///< the nearest animated node above, -1 for none
        std::size_t taken = 0;  ///< by a joint of which mesh, counted as they are asked for
    };

    int AnimationOf(int animation) const;
    int MoverBelow(int node) const;
    void Enter(const std::string& name, const Place& place, int node);
    int FindSame(const std::string& name, const Place& place, float distance) const;
    int FindOrAdd(Importing::Joint& joint, int parent, float distance);

    Importing::SceneContainer& scene_;
    std::vector<Place> places_;  // by node of the scene, joint nodes behind them
    std::map<std::tuple<std::string, int, int>, std::vector<int>> candidates_;  // by name, animation and mover
    std::vector<JointNode> jointNodes_;
    std::size_t meshes_ = 0;  // that were asked for
};

/// @return [joints] the joint's parent; -1 for those below none, also where the parent is unknown or below the joint.
std::vector<int> JointParents(Importing::Geometry& geometry);

/// @return whether the surface's mesh has joints.
bool IsSkinned(const Importing::SceneContainer& scene, int surface);

/// Returns whether a matrix may be baked into the surface's mesh: it has one, without joints, and it is not pinned.
bool IsBakeable(const WorkScene& scene, int surface);

/// A mesh with joints, and a node that shows it.
struct SkinnedMesh
{
    int geometry;
    int node;
};

/// @return every listing of a skinned surface below the root, in the order of the walk.
std::vector<SkinnedMesh> ListSkinnedMeshes(const Importing::SceneContainer& scene, const NodeWalk& walk);

/// @return for each node [nodes] whether it is a joint of some mesh.
std::vector<bool> FindJointNodes(Importing::SceneContainer& scene, const NodeWalk& walk);

}  // namespace Pipeline
