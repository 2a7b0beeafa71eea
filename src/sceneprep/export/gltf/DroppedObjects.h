#pragma once

#include <sceneprep/export/gltf/NodeMeshes.h>

namespace Sceneprep::Gltf
{

/// Adds a loss for the extras and extensions of nodes and meshes of the input that the document does not have, because
/// steps have collapsed the nodes or merged the meshes: `node-extras`, `mesh-extras` and `extension NAME`, each with
/// the number of objects.
void AddDroppedObjects(const Model& model, const WrittenNodes& nodes, const NodeMeshWriter& meshes, Notes& notes);

}  // namespace Sceneprep::Gltf
