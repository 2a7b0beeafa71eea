#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>

namespace Sceneprep
{

/// Reads a model file by Assimp into a model with an empty scene.
///
/// The scene gets nodes with their local matrices (the root first, parents before children), meshes as triangles with
/// normals and all UV sets, one surface for each mesh reference of a node, the materials and textures that surfaces
/// use, cameras, lights, animations of nodes, and skins (see ImportSkins()). A mesh without normals stays without. The
/// model carries content that the scene cannot hold: vertex colours, morph targets, points and lines, all clips, and
/// material properties of glTF. Dropped content is reported in `model.notes`.
///
/// @throws ToolError if the file does not exist, has an unsupported format, or cannot be read.
void ImportModel(const std::filesystem::path& file, Model& model, Progress& progress);

/// Converts a file that Assimp has read. Its meshes are freed as they are converted.
void ImportModel(ModelSource source, Model& model, const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep
