#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/Hierarchy.h>
#include <sceneprep/export/plan/UniqueNames.h>

#include <functional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// A surface that a node of the file references.
struct PlannedSurface
{
    int surface = -1;
    int geometry = -1;
    int skeleton = -1;    ///< index into ExportPlan::skeletons; -1 for a surface without bones
    bool isNamed = true;  ///< false for a surface that stands for several with different names
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

/// The content of a file, independent of its format. Both writers start from it.
///
/// Its nodes are the reachable nodes of the scene, the root first, parents before children, siblings in the order of
/// their list; then the joints that are not nodes of the scene. It is empty if the scene has no root.
struct ExportPlan
{
    Pipeline::NodeWalk walk;
    std::vector<PlannedNode> nodes;
    std::vector<int> nodeOf;                  ///< [nodes of the scene] index into `nodes`; -1 for unreachable nodes
    std::vector<std::vector<int>> skeletons;  ///< for each skeleton, the node of each joint of its meshes
    UniqueNames names;                        ///< of the nodes
};

/// The requirements of a format.
struct PlanRequest
{
    /// Returns whether surfaces of a geometry are written.
    std::function<bool(int geometry)> isShown = {};
    /// Returns whether the joints of a geometry at a node become bones. Empty: no geometry has bones.
    std::function<bool(int geometry, int node)> hasBones = {};
    /// Converts a name into one that the format allows. Empty: names are not changed.
    std::function<std::string(const std::string&)> fileText = {};
    /// Counts further names, in addition to those of nodes, that joints must not have. Called only if there are bones.
    std::function<void(UniqueNames&)> countOtherNames = {};
    /// Readers of the format find animated nodes by name, so these need unique names, as joints do.
    bool animatedNodesNeedNames = false;
};

/// Plans the nodes, skeletons and unique names of a file.
///
/// Nodes keep their names, except that joints and, if requested, animated nodes get unique ones. Joints are nodes of
/// the scene or further nodes, as Pipeline::Skeletons finds them; meshes with the same joints share a skeleton.
/// @throws std::out_of_range if an index of the scene is not valid.
ExportPlan MakeExportPlan(Importing::SceneContainer& scene, const PlanRequest& request);

}  // namespace Sceneprep
