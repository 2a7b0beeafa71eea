#pragma once

#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/Nodes.h>
#include <sceneprep/model/Model.h>

namespace Sceneprep::GltfImport
{

/// Adds an animation of the container for every node that clips animate, for formats other than glTF: keys at every
/// time at which translation, rotation or scale has one. A node in several clips gets the animation of the first one.
/// Clips must have been carried.
void AddNodeAnimations(const Field& document, const SceneNodes& nodes, Model& model);

/// Marks nodes that must stay in the hierarchy for reasons that are not in the container: joints, nodes whose weights
/// or other properties are animated, and hidden nodes. Clips and skins must have been carried.
void MarkKeptNodes(const Field& document, const SceneNodes& nodes, Model& model);

}  // namespace Sceneprep::GltfImport
