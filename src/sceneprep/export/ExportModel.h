#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/model/Textures.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

/// Looks at an output's name and folder without writing, before work begins.
/// @throws ToolError when the ending stands for no format or there is no such folder.
void CheckWritable(const std::filesystem::path& file);

/// @throws ToolError when there is no folder for the file, or it is a folder itself.
void CheckFolderOf(const std::filesystem::path& file);

/// Writes a scene to a model file; the name's ending says the format.
///
/// The file, and what some formats put beside it, is written to a temporary folder next to it and moved into place
/// once it is whole and on the disk, the file itself last; what was there is replaced, beside the file only where the
/// file was there too.
///
/// @param others  further files of this run, which nothing beside the file may take the place of
/// @return what the format cannot hold, one line each.
/// @throws ToolError when the ending stands for no format, or the file cannot be written. Then nothing has changed,
///         unless moving into place failed.
std::vector<std::string> ExportModel(Importing::SceneContainer& scene, const Textures& textures,
                                     const std::filesystem::path& file, Progress& progress,
                                     const std::vector<std::filesystem::path>& others = {});

}  // namespace Sceneprep
