#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/model/Textures.h>

#include <memory>

namespace Sceneprep
{

/// Returns whether the hierarchy is not written: the format is flat, or a node has shear, which nodes of the format
/// cannot have.
bool IsWrittenFlat(Importing::SceneContainer& scene, const WriteFormat& format);

/// Builds the scene that Assimp writes, from an ExportPlan.
///
/// A node has at most one mesh. A node with several surfaces gets a child for each, because some exporters confuse the
/// meshes of a node if one of them is shared.
///
/// If the hierarchy is not written, every surface is a child of the root, with the world matrix of its node baked into
/// its mesh. Meshes that are too large for the format are split.
///
/// Joints become bones if the format has skins.
///
/// A camera or light is at its node if it is the only one and the name of the node is unique; otherwise it is at a
/// child. Surfaces without triangles and unreachable nodes are not written.
std::unique_ptr<aiScene> BuildExportScene(Importing::SceneContainer& scene, const Textures& textures,
                                          const WriteFormat& format);

}  // namespace Sceneprep
