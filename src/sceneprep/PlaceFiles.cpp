#include <sceneprep/PlaceFiles.h>

#include <fcntl.h>
#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <sceneprep/WorkState.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace Sceneprep
{

namespace fs = std::filesystem;

namespace
{

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

/// Pipes, devices and links to them are written to, not replaced.
bool MayBeReplaced(const fs::path& file)
{
    const fs::file_type type = fs::symlink_status(file).type();
    return type == fs::file_type::not_found || type == fs::file_type::regular;
}

void WriteInto(const fs::path& target, const fs::path& file, const std::function<void(std::ostream&)>& write)
{
    std::ofstream stream(target, std::ios::binary | std::ios::trunc);
    write(stream);
    stream.close();
    if (!stream)
        throw ToolError(fmt::format("cannot write {}; choose another name", file.string()));
}

}  // namespace

TemporaryFolder::TemporaryFolder(const fs::path& parent)
{
    std::string name = (parent / ".sceneprep-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw ToolError(fmt::format("cannot write into {}: {}; choose another folder", parent.string(),
                                    OneLine(std::strerror(errno))));
    path_ = name;
    WorkState::SetTemporaryFolder(path_);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    WorkState::SetTemporaryFolder({});
}

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
        WorkState::Enter(WorkState::Phase::Written, file);
    }
    catch (const fs::filesystem_error& error)
    {
        throw ToolError(fmt::format("cannot write {}: {}; choose another name", file.string(), error.code().message()));
    }
}

void WriteWhole(const fs::path& file, const std::function<void(std::ostream&)>& write)
{
    if (!MayBeReplaced(file))
    {
        WriteInto(file, file, write);
        return;
    }
    const fs::path absolute = fs::absolute(file);
    const TemporaryFolder temporary(absolute.parent_path());
    WriteInto(temporary.Path() / absolute.filename(), file, write);
    MoveIntoPlace(temporary.Path(), absolute);
}

}  // namespace Sceneprep
