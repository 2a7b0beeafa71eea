#pragma once

#include <sceneprep/import/OpenModel.h>

#include <filesystem>
#include <vector>

namespace Sceneprep
{

/// Returns the files that a model consists of, each once: the model file first, then the files that it refers to, such
/// as buffers, material libraries and images. Those that do not exist are skipped.
std::vector<std::filesystem::path> FilesOf(const OpenedModel& opened);

/// Returns the size of the files together, in bytes.
std::uint64_t BytesOf(const std::vector<std::filesystem::path>& files);

}  // namespace Sceneprep
