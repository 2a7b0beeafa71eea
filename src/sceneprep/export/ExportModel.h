#pragma once

#include <pipeline/scene/PartCounter.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/run/Progress.h>
#include <sceneprep/run/WorkState.h>

#include <filesystem>
#include <memory>
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
};

/// A file that is complete, and in a temporary folder next to its place. It is discarded unless it is moved into place.
class WrittenModel
{
public:
    /// Writes the model, and the companions that some formats need; the extension of the file selects the format.
    /// @throws ToolError as ExportModel(). Nothing has changed then.
    WrittenModel(Model& model, const std::filesystem::path& file, Progress& progress, WorkState& state,
                 const ExportOptions& options = {});
    ~WrittenModel();
    WrittenModel(const WrittenModel&) = delete;
    WrittenModel& operator=(const WrittenModel&) = delete;

    /// Returns the file in the temporary folder, which has its companions and nothing else.
    const std::filesystem::path& File() const;

    /// Returns what the format cannot hold.
    const Notes& GetNotes() const;

    /// Moves the file and its companions into place, the file itself last.
    /// @throws ToolError if a file cannot be moved.
    void MoveIntoPlace();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
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
