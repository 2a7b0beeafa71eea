#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/report/PageView.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace Sceneprep
{

/// The largest .glb file that the HTML report embeds, in bytes: two of them make a page of 133 MB.
inline constexpr std::uintmax_t kMostViewBytes = 50'000'000;

/// The largest number of nodes that it shows: browsers need seconds for each ten thousand.
inline constexpr std::size_t kMostViewNodes = 100'000;

/// Writes a model as .glb with its images, opens the file and removes it from the folder.
///
/// If the file is too large with the images, they are omitted. If it is still too large, or there are too many nodes,
/// the view has no file. The remark of the view says so.
/// @param references  the folder that references to image files are relative to
/// @param folder      a temporary folder
/// @throws ToolError if the file cannot be written; it may then be in the folder.
Report::PageView WriteView(const Model& model, const std::filesystem::path& references,
                           const std::filesystem::path& folder,
                           const Pipeline::PartListener& listener = Pipeline::IgnorePart,
                           std::uintmax_t limit = kMostViewBytes);

/// Returns whether a file of the model is a .glb file within the limits.
bool CanOpenView(const Model& model, const std::filesystem::path& file, std::uintmax_t limit = kMostViewBytes);

/// Opens a .glb file as it is.
Report::PageView OpenView(const std::filesystem::path& file);

}  // namespace Sceneprep
