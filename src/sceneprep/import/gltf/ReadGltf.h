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
    std::optional<std::string> scene = {};  ///< name or number of the scene to read; the default scene if not set
};

/// Reads a glTF 2.0 file into a model with an empty scene.
///
/// The container gets the nodes with their local matrices (parents before children, the root first), a geometry for
/// each primitive that the scene uses, a surface for each use, materials and layers, cameras, lights, joints and
/// weights, and an animation for each node that a clip moves. Content that the container does not hold is
/// in `model.supplement` and `model.carried`; the lists there have the indices of the file. Dropped content is reported
/// in `model.notes`.
///
/// Takes time linear in the size of the file; hierarchies may have any depth.
///
/// @param listener  receives the part of the meshes that has been read
/// @throws ToolError with one line that has the JSON path and the values if the file is not valid. The model is
///         incomplete then.
void ReadGltf(GltfFile file, Model& model, const GltfReadOptions& options = {},
              const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep
