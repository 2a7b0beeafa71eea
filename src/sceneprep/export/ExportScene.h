#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/model/Textures.h>

#include <memory>

namespace Sceneprep
{

/// Returns whether the hierarchy is not written: in a flat format, or where a node shears and the format's nodes
/// cannot.
bool IsWrittenFlat(Importing::SceneContainer& scene, const WriteFormat& format);

/// Builds the scene that Assimp writes, from an ExportPlan. Nothing of the imported file gets into it except what the
/// scene holds.
///
/// A node has at most one mesh; a node with several surfaces gets a child for each, since some exporters confuse
/// several meshes of a node where one of them is shared.
///
/// Where the hierarchy is not written, every surface is a child of the root, with the world matrix of its node baked
/// into its mesh. Meshes that are too large for the format become several.
///
/// In formats that hold skins, joints are bones.
///
/// A camera or light is at its node where the node has no other one and a unique name; otherwise it is at a child.
/// Surfaces without triangles and unreachable nodes are not written.
std::unique_ptr<aiScene> BuildExportScene(Importing::SceneContainer& scene, const Textures& textures,
                                          const WriteFormat& format);

}  // namespace Sceneprep
