#pragma once

#include <assimp/scene.h>
#include <importing/plugin/SceneContainer.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/model/Textures.h>

#include <memory>

namespace Sceneprep
{

/// @return whether nothing of the hierarchy gets into the file: in a flat format, or where a node shears and the
/// format's
///         nodes cannot.
bool IsWrittenFlat(Importing::SceneContainer& scene, const WriteFormat& format);

/// Builds what the model library writes, afresh: nothing of an imported file but what the scene holds gets into it.
///
/// A node carries at most one mesh; a node with several surfaces gets a child for each. Exporters that take several
/// meshes at a node mix them up where one of them is shared. Surfaces of one mesh and one material share a mesh in the
/// file.
///
/// What is written flat: every surface is a child of the root, its mesh carried into the world by its node's matrix,
/// and the winding turned where that matrix mirrors. Meshes that are too large for the format become several.
///
/// In formats that hold skins joints are bones: nodes of the scene or further ones, as Skeletons says, with names that
/// no other node has.
///
/// A camera or light stands at its node where the node has no other and its name is the only one of its kind; else at
/// a child of its own. Left out: surfaces without triangles, and what the root does not lead to.
std::unique_ptr<aiScene> BuildExportScene(Importing::SceneContainer& scene, const Textures& textures,
                                          const WriteFormat& format);

}  // namespace Sceneprep
