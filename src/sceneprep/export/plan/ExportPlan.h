#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/export/plan/UniqueNames.h>

#include <functional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A surface that a node of the file shows.
struct PlannedSurface
{
    int surface = -1;
    int geometry = -1;
    int skeleton = -1;  ///< index into ExportPlan::skeletons; -1 for a surface without bones
};

/// A node of the file.
struct PlannedNode
{
    int source = -1;  ///< the node of the scene; -1 for a joint without a node in the scene
    int parent = -1;  ///< index into ExportPlan::nodes; -1 for the root
    std::string name = {};
    D3DXMATRIX local = {};
    int animation = -1;  ///< an animation with at least one key; -1 for none
    std::vector<PlannedSurface> surfaces = {};
};

/// What is written of a scene, in terms of no format. Both writers start from it.
///
/// Nodes are those that the scene's root leads to, parents before children, siblings in the order of their list, the
/// root first; then the joints that are no nodes of the scene. It is empty when the scene has no root.
struct ExportPlan
{
    Pipeline::NodeWalk walk;
    std::vector<PlannedNode> nodes;
    std::vector<int> nodeOf;                  ///< [nodes of the scene] index into `nodes`; -1 for unreachable nodes
    std::vector<std::vector<int>> skeletons;  ///< for each skeleton, the node of each joint of its meshes
    UniqueNames names;                        ///< of the nodes
};

/// What a format asks of the plan.
struct PlanRequest
{
    /// Says whether surfaces of a geometry are written.
    std::function<bool(int geometry)> isShown = {};
    /// Says whether the joints of a geometry become bones where a node shows it. Empty: no geometry has bones.
    std::function<bool(int geometry, int node)> hasBones = {};
    /// Converts a name into one that the format can hold. Empty: every name is written as it is.
    std::function<std::string(const std::string&)> fileText = {};
    /// Counts names, besides those of the nodes, that joints must not have. Called only where there are bones.
    std::function<void(UniqueNames&)> countOtherNames = {};
    /// Readers of the format find animated nodes by name, so these need unique names, as joints do.
    bool animatedNodesNeedNames = false;
};

/// Plans what is written of a scene.
///
/// Nodes keep their names, except that joints and, if requested, animated nodes get unique ones. Joints are nodes of
/// the scene or further nodes, as Pipeline::Skeletons finds them; meshes with the same joints share a skeleton.
/// @throws std::out_of_range when an index of the scene is out of range.
ExportPlan MakeExportPlan(Importing::SceneContainer& scene, const PlanRequest& request);

}  // namespace Sceneprep
