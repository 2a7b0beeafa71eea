#include <sceneprep/export/ExportModel.h>

#include <fmt/format.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/assimp/ModelProgress.h>
#include <sceneprep/export/CarriedLosses.h>
#include <sceneprep/export/CheckedFiles.h>
#include <sceneprep/export/ExportNotes.h>
#include <sceneprep/export/ExportScene.h>
#include <sceneprep/export/gltf/WriteModel.h>
#include <sceneprep/model/CompanionFiles.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/PlaceFiles.h>
#include <assimp/Exporter.hpp>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

WriteFormat FormatOf(const fs::path& file)
{
    const std::optional<WriteFormat> format = FindWriteFormat(file);
    if (!format)
        throw ToolError(fmt::format(
            "cannot write {}: unsupported file extension '{}'; 'sceneprep formats' lists the supported ones",
            file.string(), file.extension().string()));
    return *format;
}

void WriteByAssimp(const aiScene& scene, const WriteFormat& format, const fs::path& file, Progress& progress)
{
    Assimp::Exporter exporter;
    exporter.SetProgressHandler(new ModelProgress(progress));  // the exporter owns it
    auto* files = new CheckedFiles;
    exporter.SetIOHandler(files);  // the exporter's too
    if (exporter.Export(&scene, format.id, file.string()) != aiReturn_SUCCESS)
    {
        const std::string reason = OneLine(exporter.GetErrorString());
        throw ToolError(fmt::format("cannot write {}: {}; try another format", file.filename().string(),
                                    reason.empty() ? "Assimp gives no reason" : reason));
    }
    if (files->HasFailed() || (format.Is3mf() && !IsWhole3mf(file)))
        throw ToolError(fmt::format("cannot write {}: is the disk full? Make room or choose another folder",
                                    file.filename().string()));
}

/// @param file    in the temporary folder
/// @param folder  the final folder of the file
Notes Write(Model& model, const WriteFormat& format, const fs::path& file, const fs::path& folder, Progress& progress,
            const ExportOptions& options)
{
    if (format.IsGltf())
        return Gltf::WriteModel(model, file,
                                {.images = options.externalTextures ? Gltf::ImageUse::External : Gltf::ImageUse::Stored,
                                 .gpuInstancing = options.gpuInstancing,
                                 .folder = folder},
                                [&progress](double part) { progress.Update(part); });
    if (format.EmbedsImages() || !format.Holds(Content::Textures))
    {
        WriteByAssimp(*BuildExportScene(*model.scene, model.textures, format), format, file, progress);
    }
    else
    {
        const CompanionTextures separated = MakeCompanions(*model.scene, model.textures, file.stem().string());
        WriteByAssimp(*BuildExportScene(*model.scene, separated.textures, format), format, file, progress);
        WriteCompanions(separated.companions, file.parent_path());
    }
    Notes notes = NotesOnExport(*model.scene, format);
    AddCarriedLosses(model, notes);
    return notes;
}

}  // namespace

void CheckWritable(const fs::path& file)
{
    static_cast<void>(FormatOf(file));
    CheckFolderOf(file);
}

void CheckFolderOf(const fs::path& file)
{
    std::error_code error;
    const fs::path folder = fs::absolute(file, error).parent_path();
    if (!fs::is_directory(folder, error))
        throw ToolError(
            fmt::format("cannot write {}: there is no folder {}; create it first", file.string(), folder.string()));
    const fs::file_type type = fs::status(file, error).type();
    if (type == fs::file_type::directory)
        throw ToolError(fmt::format("cannot write {}: it is a folder; name a file", file.string()));
    if (type == fs::file_type::none)
        throw ToolError(fmt::format("cannot write {}: {}; choose another name", file.string(), error.message()));
}

namespace
{

fs::path CheckedTarget(const fs::path& file)
{
    CheckWritable(file);
    return fs::absolute(file);
}

}  // namespace

struct WrittenModel::Parts
{
    Parts(const fs::path& output, WorkState& workState, const ExportOptions& options)
        : target(CheckedTarget(output)), state(workState), others(options.others), folder(target.parent_path(), state),
          file(folder.Path() / target.filename())
    {}

    fs::path target;
    WorkState& state;
    std::vector<fs::path> others;
    TemporaryFolder folder;
    fs::path file;  ///< in the folder
    Notes notes = {};
};

WrittenModel::WrittenModel(Model& model, const fs::path& file, Progress& progress, WorkState& state,
                           const ExportOptions& options)
    : parts_(std::make_unique<Parts>(file, state, options))
{
    parts_->notes = Write(model, FormatOf(file), parts_->file, parts_->target.parent_path(), progress, options);
}

WrittenModel::~WrittenModel() = default;

const fs::path& WrittenModel::File() const { return parts_->file; }

const Notes& WrittenModel::GetNotes() const { return parts_->notes; }

void WrittenModel::MoveIntoPlace()
{
    Sceneprep::MoveIntoPlace(parts_->folder.Path(), parts_->target, parts_->state, parts_->others);
}

Notes ExportModel(Model& model, const fs::path& file, Progress& progress, WorkState& state,
                  const ExportOptions& options)
{
    WrittenModel written(model, file, progress, state, options);
    written.MoveIntoPlace();
    return written.GetNotes();
}

void WriteGlb(const Model& model, const fs::path& file, const fs::path& references, bool withImages,
              const Pipeline::PartListener& listener)
{
    Gltf::WriteModel(model, file,
                     {.images = withImages ? Gltf::ImageUse::Stored : Gltf::ImageUse::Omitted, .folder = references},
                     listener);
}

}  // namespace Sceneprep
