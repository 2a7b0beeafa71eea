#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/PartCounter.h>
#include <sceneprep/export/gltf/Images.h>
#include <sceneprep/model/Textures.h>

#include <string>
#include <vector>

namespace Sceneprep::Gltf
{

/// A scene in the format's terms.
struct BuiltModel
{
    tinygltf::Model model;
    std::vector<CompanionFile> companions;
    std::vector<std::string> notes;  ///< what the format cannot hold or had to be mended, one line each
};

/// Builds a model of what the scene's root leads to.
///
/// Nodes keep their order and names, but those that are joints get names of their own. A node carries at most one mesh
/// of one surface: one with several surfaces gets a child for each. Joints that are no nodes of the scene become nodes
/// behind those. Surfaces of one geometry and one material share a mesh. What the format has no words
/// for travels as extras of nodes, where it says anything: a node's `note`; the `collisionOffset` of the surface that a
/// node shows, and its `surfaceName` unless the mesh has that name already.
///
/// @param stem      name of the model file without its ending
/// @param isBinary  whether pictures go into the buffer instead of files beside the model
BuiltModel BuildModel(Importing::SceneContainer& scene, const Textures& textures, const std::string& stem,
                      bool isBinary, const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep::Gltf
