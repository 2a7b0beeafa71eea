#pragma once

#include <sceneprep/model/Model.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/WorkState.h>

#include <filesystem>
#include <functional>
#include <vector>

namespace Sceneprep
{

/// Looks at an output's name and folder without writing, before work begins.
/// @throws ToolError when the ending stands for no format or there is no such folder.
void CheckWritable(const std::filesystem::path& file);

/// @throws ToolError when there is no folder for the file, or it is a folder itself.
void CheckFolderOf(const std::filesystem::path& file);

struct ExportOptions
{
    std::vector<std::filesystem::path> others = {};  ///< further files of this run, which no companion may replace
    bool externalTextures = false;  ///< refer to the original texture files instead of copies or embedded images
    /// Asked once the file is complete and before it is moved into place, with the notes of the export; false discards
    /// the file.
    std::function<bool(const Notes&)> accept = [](const Notes&) { return true; };
};

/// Writes a model to a file; the extension selects the format.
///
/// The file, and what some formats put beside it, is written to a temporary folder next to it and moved into place
/// once it is whole and on the disk, the file itself last; what was there is replaced, beside the file only where the
/// file was there too.
///
/// @return what the format cannot hold.
/// @throws ToolError when the ending stands for no format, or the file cannot be written. Then nothing has changed,
///         unless moving into place failed.
Notes ExportModel(Model& model, const std::filesystem::path& file, Progress& progress, WorkState& state,
                  const ExportOptions& options = {});

}  // namespace Sceneprep
