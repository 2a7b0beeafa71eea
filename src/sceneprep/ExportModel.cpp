#include <sceneprep/ExportModel.h>

#include <fcntl.h>
#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <sceneprep/ExportScene.h>
#include <sceneprep/Formats.h>
#include <sceneprep/GltfExtras.h>
#include <sceneprep/ModelProgress.h>
#include <sceneprep/WorkState.h>
#include <unistd.h>
#include <assimp/Exporter.hpp>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;

/// A folder and not just another name: some formats refer to companion files by names made of the file's own.
class TemporaryFolder
{
public:
    explicit TemporaryFolder(const fs::path& parent)
    {
        std::string name = (parent / ".sceneprep-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw ToolError(fmt::format("cannot write into {}: {}; choose another folder", parent.string(),
                                        OneLine(std::strerror(errno))));
        path_ = name;
        WorkState::SetTemporaryFolder(path_);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
        WorkState::SetTemporaryFolder({});
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path& Path() const { return path_; }

private:
    fs::path path_;
};

WriteFormat FormatOf(const fs::path& file)
{
    const std::optional<WriteFormat> format = FindWriteFormat(file);
    if (!format)
        throw ToolError(fmt::format("cannot write {}: '{}' is no known ending; 'sceneprep formats' lists them",
                                    file.string(), file.extension().string()));
    return *format;
}

void Write(const aiScene& scene, const WriteFormat& format, const fs::path& file, Progress& progress)
{
    Assimp::Exporter exporter;
    exporter.SetProgressHandler(new ModelProgress(progress));  // the exporter owns it
    if (exporter.Export(&scene, format.id, file.string()) != aiReturn_SUCCESS)
    {
        const std::string reason = OneLine(exporter.GetErrorString());
        throw ToolError(fmt::format("cannot write {}: {}; try another format", file.filename().string(),
                                    reason.empty() ? "the model library gives no reason" : reason));
    }
}

/// Brings a file's content to the disk before its name appears.
void Sync(const fs::path& file)
{
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || fsync(descriptor) != 0)
        throw ToolError(fmt::format("cannot write {}: {}; choose another folder", file.filename().string(),
                                    OneLine(std::strerror(errno))));
    close(descriptor);
}

/// While it lives, nobody can stop the program half way.
class Uninterrupted
{
public:
    Uninterrupted()
    {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGINT);
        sigaddset(&signals, SIGTERM);
        sigprocmask(SIG_BLOCK, &signals, &before_);
    }
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;

private:
    sigset_t before_ = {};
};

void MoveIntoPlace(const fs::path& from, const fs::path& file)
{
    const fs::path folder = file.parent_path();
    for (const fs::directory_entry& entry : fs::directory_iterator(from))
        Sync(entry.path());
    const Uninterrupted uninterrupted;
    try
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(from))
        {
            if (entry.path().filename() != file.filename())
                fs::rename(entry.path(), folder / entry.path().filename());
        }
        fs::rename(from / file.filename(), file);
    }
    catch (const fs::filesystem_error& error)
    {
        throw ToolError(fmt::format("cannot write {}: {}; choose another name", file.string(), error.code().message()));
    }
}

std::vector<std::string> NotesOn(const Importing::SceneContainer& scene, const WriteFormat& format)
{
    const std::size_t objects = scene.CameraLibrary.size() + scene.LightLibrary.size();
    if (objects == 0 || format.HoldsCamerasAndLights())
        return {};
    return {fmt::format("cameras and lights are left out: {} as it is written here holds none", format.description)};
}

}  // namespace

void CheckWritable(const fs::path& file)
{
    static_cast<void>(FormatOf(file));
    CheckFolderOf(file);
}

void CheckFolderOf(const fs::path& file)
{
    const fs::path folder = fs::absolute(file).parent_path();
    if (!fs::is_directory(folder))
        throw ToolError(
            fmt::format("cannot write {}: there is no folder {}; create it first", file.string(), folder.string()));
    if (fs::is_directory(file))
        throw ToolError(fmt::format("cannot write {}: it is a folder; name a file", file.string()));
}

std::vector<std::string> ExportModel(Importing::SceneContainer& scene, const Textures& textures, const fs::path& file,
                                     Progress& progress)
{
    CheckWritable(file);
    const WriteFormat format = FormatOf(file);
    const fs::path absolute = fs::absolute(file);
    const std::unique_ptr<aiScene> target = BuildExportScene(scene, textures, format);
    const TemporaryFolder temporary(absolute.parent_path());
    Write(*target, format, temporary.Path() / absolute.filename(), progress);
    if (format.HoldsExtras())
        AddExtras(*target, temporary.Path() / absolute.filename());
    MoveIntoPlace(temporary.Path(), absolute);
    return NotesOn(scene, format);
}

}  // namespace Sceneprep
