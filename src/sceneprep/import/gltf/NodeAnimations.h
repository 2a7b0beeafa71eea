#pragma once

#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/import/gltf/Nodes.h>
#include <sceneprep/model/Model.h>

namespace Sceneprep::GltfImport
{

/// Gives the nodes that clips move an animation of the container, for formats that write those: keys at every time at
/// which translation, rotation or scale has one. A node that several clips move gets the animation of the first one.
/// Clips have to be carried.
void AddNodeAnimations(const Field& document, const SceneNodes& nodes, Model& model);

/// Marks nodes that have to stay in the hierarchy though the container does not show why: joints, nodes whose weights
/// or other properties an animation changes, and hidden nodes. Clips and skins have to be carried.
void MarkKeptNodes(const Field& document, const SceneNodes& nodes, Model& model);

}  // namespace Sceneprep::GltfImport
