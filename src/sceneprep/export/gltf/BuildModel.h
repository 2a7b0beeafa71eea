#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/export/gltf/Images.h>
#include <sceneprep/export/gltf/WriteOptions.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/Notes.h>

#include <vector>

namespace Sceneprep::Gltf
{

/// What belongs to a model besides the document and its buffer.
struct BuiltFiles
{
    std::vector<CompanionFile> companions;  ///< images that the input held
    std::vector<ImageCopy> copies;          ///< image files to copy
    Notes notes;                            ///< what was lost or had to be mended
};

/// Builds the document of what the scene's root leads to: nodes as WriteNodes() does, meshes as NodeMeshWriter, cameras
/// and lights as NodeObjectWriter, skins and clips of the input as they were where their nodes are left.
/// @param model  has to outlive the result
BuiltFiles BuildModel(const Model& model, const WriteOptions& options, Buffers& buffers, Document& document,
                      const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep::Gltf
