#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/import/gltf/GltfFile.h>
#include <sceneprep/model/Model.h>

#include <optional>
#include <string>

namespace Sceneprep
{

struct GltfReadOptions
{
    std::optional<std::string> scene = {};  ///< name or number of the scene to read; the default one if not set
};

/// Reads a glTF 2.0 file into a model with an empty scene.
///
/// The container gets the nodes with their local matrices (parents before children, the root first), a geometry for
/// each primitive that the scene uses, a surface for each use, materials and layers, cameras, lights, joints and
/// weights, and an animation for each node that a clip moves. What the container has no place for is in
/// `model.supplement` and `model.carried`; the indices of the lists there are those of the file. What is not kept at
/// all is in `model.notes`.
///
/// Takes time linear in the size of the file; hierarchies may have any depth.
///
/// @param listener  is told which part of the meshes has been read
/// @throws ToolError with one line that has the JSON path and the values if the file is not valid. The model is
///         incomplete then.
void ReadGltf(GltfFile file, Model& model, const GltfReadOptions& options = {},
              const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep
