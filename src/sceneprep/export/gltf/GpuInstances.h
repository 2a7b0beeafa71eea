#pragma once

#include <sceneprep/export/gltf/CarriedKeys.h>
#include <sceneprep/export/gltf/Meshes.h>
#include <sceneprep/export/gltf/Nodes.h>
#include <sceneprep/export/gltf/Placement.h>
#include <sceneprep/export/plan/ExportPlan.h>

#include <vector>

namespace Sceneprep::Gltf
{

/// Siblings that are written as one node, by EXT_mesh_gpu_instancing.
struct InstanceGroup
{
    int node = -1;                       ///< the planned node that remains
    std::vector<Parts> transforms = {};  ///< of all nodes of the group
};

/// Replaces siblings that show the same surfaces by one node without a transform, which is the first of them.
///
/// A node is replaced if it has nothing but a name, a transform and a mesh: no children, cameras, lights, animation,
/// note, extras, extensions or weights, no skin and no morph targets. Its surfaces may have collision offsets,
/// which the whole group has to share, and names, which are dropped where they differ. Nodes whose matrix mirrors stay,
/// because viewers do not flip the winding of single instances, and nodes whose matrix translation, rotation and scale
/// do not reproduce to 2e-6 of its rows.
/// @param plan  loses the other nodes of each group
std::vector<InstanceGroup> JoinInstances(const Model& model, MeshWriter& meshes, const AnimatedKeys& animated,
                                         ExportPlan& plan);

/// Writes the transforms of groups. The mesh of their nodes has to be written.
void WriteInstances(const std::vector<InstanceGroup>& groups, const WrittenNodes& nodes, Buffers& buffers,
                    Document& document);

}  // namespace Sceneprep::Gltf
