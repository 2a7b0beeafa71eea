#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/WorkState.h>

#include <filesystem>
#include <functional>
#include <vector>

namespace Sceneprep
{

/// Checks the name and the folder of an output before work begins, without writing.
/// @throws ToolError if the extension is not supported or the folder does not exist.
void CheckWritable(const std::filesystem::path& file);

/// @throws ToolError if the folder of the file does not exist, or the file is a folder itself.
void CheckFolderOf(const std::filesystem::path& file);

struct ExportOptions
{
    std::vector<std::filesystem::path> others = {};  ///< further files of this run, which no companion may replace
    bool externalTextures = false;  ///< refer to the original texture files instead of copies or embedded images
    bool gpuInstancing = false;     ///< for glTF: write siblings that share a mesh as instances of one node
    /// Asked once the file is complete and before it is moved into place, with the notes of the export; false discards
    /// the file.
    std::function<bool(const Notes&)> accept = [](const Notes&) { return true; };
};

/// Writes a model to a file; the extension selects the format.
///
/// The file, and the companions that some formats need, are written to a temporary folder next to it and moved into
/// place once they are complete and on the disk, the file itself last. An existing file is replaced; existing
/// companions only if the file existed, too.
///
/// @return what the format cannot hold.
/// @throws ToolError if the extension is not supported, or the file cannot be written. Nothing has changed then,
///         unless moving into place failed.
Notes ExportModel(Model& model, const std::filesystem::path& file, Progress& progress, WorkState& state,
                  const ExportOptions& options = {});

/// Writes a model as one .glb file, not by way of a temporary folder.
/// @param references  the folder that references to image files are relative to
/// @throws ToolError if the file cannot be written.
void WriteGlb(const Model& model, const std::filesystem::path& file, const std::filesystem::path& references,
              bool withImages, const Pipeline::PartListener& listener = Pipeline::IgnorePart);

}  // namespace Sceneprep
