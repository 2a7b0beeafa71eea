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
/// Nodes come with their local matrices (parents before children, the root first), meshes as triangles with normals
/// and every UV set, one surface for each mesh reference of a node, materials and textures that surfaces use, cameras,
/// lights, the animations of nodes, and skins as ImportSkins() makes them. A mesh without normals gets them from
/// Geometry::ComputeNormals(). Points, lines and vertex colours are skipped, with a note.
///
/// @throws ToolError if the file does not exist, has an unsupported format, or cannot be read.
void ImportModel(const std::filesystem::path& file, Model& model, Progress& progress);

/// Converts a file that Assimp has read. Its meshes are released on the way.
void ImportModel(ModelSource source, Model& model, const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep
