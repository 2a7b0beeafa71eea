#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/PartCounter.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/model/Textures.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// What a model file holds beside the scene.
struct ImportedModel
{
    Textures textures;
    std::vector<std::string> notes;  ///< what was left out, one line each
};

/// Reads a model file into an empty scene.
///
/// Nodes come with their local matrices (parents before children, the root first), meshes as triangles with normals
/// and every UV set, one surface for each mesh reference of a node, materials and textures that surfaces use, cameras,
/// lights, the animations of nodes, and skins as ImportSkins() makes them. A mesh without normals gets them from
/// Geometry::ComputeNormals(). Points, lines and vertex colours are left out.
///
/// @throws ToolError when there is no such file, its format is not known, or it cannot be read.
ImportedModel ImportModel(const std::filesystem::path& file, Importing::SceneContainer& scene, Progress& progress);

/// As above, of a file that has been read. Its meshes are released on the way.
ImportedModel ImportModel(ModelSource source, Importing::SceneContainer& scene,
                          const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep
